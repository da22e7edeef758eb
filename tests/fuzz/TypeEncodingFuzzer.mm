// +[SBUtil stringForTypeEncoding:] on any bytes, against a second reading of the same rules.
#include "Fuzzer.h"

#include <objc/runtime.h>

#include <string>
#include <vector>

#include "startup/methods.hpp"

@interface NSObject (SBUtil)
+ (NSString *)stringForTypeEncoding:(const char *)encoding;
@end

namespace {

// The plain way: a call for each pointer and array. Beyond this depth only the answer's being there is looked at.
constexpr int kDeepest = 500;

std::vector<std::string> split(const std::string &text, char at) {
  std::vector<std::string> pieces(1);
  for (const char c : text) {
    if (c == at)
      pieces.emplace_back();
    else
      pieces.back() += c;
  }
  return pieces;
}

std::string structure(const std::string &whole) {
  std::string name = split(whole, '=')[0];
  const auto first = name.find_first_not_of("{}");
  if (first == name.npos) return "struct ";
  return "struct " + name.substr(first, name.find_last_not_of("{}") - first + 1);
}

std::string object(const std::string &whole, std::size_t at) {
  if (whole.size() < 2 || whole[at + 1] != '"') return "id";
  const std::string name = split(whole, '"')[1];
  return !name.empty() && name[0] == '<' ? "id" + name : name + " *";
}

std::string read(const std::string &whole, int depth) {
  static constexpr const char *plain[][2] = {{"c", "char"},          {"i", "int"},
                                             {"s", "short"},         {"l", "long"},
                                             {"q", "long long"},     {"C", "unsigned char"},
                                             {"I", "unsigned int"},  {"S", "unsigned short"},
                                             {"L", "unsigned long"}, {"Q", "unsigned long long"},
                                             {"f", "float"},         {"d", "double"},
                                             {"B", "BOOL"},          {"v", "void"},
                                             {"*", "char *"},        {"#", "Class"},
                                             {":", "SEL"},           {"?", "unknown"},
                                             {"b", "bitfield"},      {"(", "union"}};
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const auto &[code, name] : plain)
      if (whole[at] == *code) return name;
    if ((whole[at] == '^' || whole[at] == '[') && depth == kDeepest) return "too deep";
    if (whole[at] == '^') return read(whole.substr(at + 1), depth + 1) + " *";
    if (whole[at] == '[') return read(whole.substr(at + 1), depth + 1) + "[]";
    if (whole[at] == '{') return structure(whole);
    if (whole[at] == '@') return object(whole, at);
  }
  return "";
}

NSString *stringOf(const std::string &text) {
  NSString *string = [[[NSString alloc] initWithBytes:text.data() length:text.size()
                                             encoding:NSUTF8StringEncoding] autorelease];
  if (string) return string;
  return [[[NSString alloc] initWithBytes:text.data() length:text.size()
                                 encoding:NSISOLatin1StringEncoding] autorelease];
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  static const bool ready = (qvsb::addMethodsAndClasses(), true);
  if (!ready) return 0;
  withoutRaising([&] {
    // A C string of exactly this size, so that a byte read beyond its end is seen.
    const std::string text(std::string(reinterpret_cast<const char *>(data), size).c_str());
    std::vector<char> exact(text.c_str(), text.c_str() + text.size() + 1);
    NSString *const name = [objc_getClass("SBUtil") stringForTypeEncoding:exact.data()];
    if (!name) fail(@"no answer");
    const std::string expected = read(text, 0);
    if (expected.starts_with("too deep")) return;
    if (![name isEqual:stringOf(expected)])
      fail([NSString stringWithFormat:@"\"%@\", expected \"%@\"", name, stringOf(expected)]);
  });
  return 0;
}
