#include "Wipe.h"

#include <objc/runtime.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace wipe {
namespace {

std::vector<std::string> lines;
void (*alsoCall)(const std::string &line) = nullptr;

std::string textOf(NSString *string) {
  NSData *const data = [string dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  return std::string(static_cast<const char *>([data bytes]), [data length]);
}

void keepLine(id, SEL, NSInteger level, NSString *format, ...) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  va_list arguments;
  va_start(arguments, format);
  NSString *const text = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  lines.push_back(std::to_string(level) + " " + textOf(text));
  if (alsoCall) alsoCall(lines.back());
  [pool drain];
}

} // namespace

bool homeIsTheContainer() {
  const char *const container = getenv("QVDEVICE_CONTAINER");
  char real[PATH_MAX];
  return container && realpath(container, real) && home() == real && home() != "/" && home() != "/root";
}

Class util() { return NSClassFromString(@"ZorbelUtil"); }

void captureLog(void (*alsoCalled)(const std::string &line)) {
  lines.clear();
  alsoCall = alsoCalled;
  Class const sdk = object_getClass(NSClassFromString(@"Zorbel"));
  method_setImplementation(class_getInstanceMethod(sdk, sel_registerName("wrapperLogAtLevel:format:")), (IMP)keepLine);
}

const std::vector<std::string> &log() { return lines; }

std::vector<std::string> log(int level) {
  std::vector<std::string> some;
  std::ranges::copy_if(lines, std::back_inserter(some),
                       [&](const std::string &line) { return line.starts_with(std::to_string(level) + " "); });
  return some;
}

std::vector<std::string> sortedLog() {
  std::vector<std::string> sorted = lines;
  std::ranges::sort(sorted);
  return sorted;
}

void makeFile(const std::string &path, const std::string &contents) {
  std::filesystem::create_directories(std::filesystem::path(home(path)).parent_path());
  std::ofstream file(home(path));
  file << contents;
  ASSERT_TRUE(file.flush()) << path;
}

void makeFolder(const std::string &path) { std::filesystem::create_directories(home(path)); }

void makeLink(const std::string &path, const std::string &destination) {
  ASSERT_EQ(symlink(destination.c_str(), home(path).c_str()), 0) << path;
}

std::string home() { return textOf(NSHomeDirectory()); }
std::string home(const std::string &path) { return home() + "/" + path; }

std::vector<std::string> tree(const std::string &folder) {
  std::vector<std::string> paths;
  for (const auto &entry : std::filesystem::recursive_directory_iterator(folder))
    paths.push_back(entry.path().string().substr(folder.size() + 1));
  std::ranges::sort(paths);
  return paths;
}

bool exists(const std::string &path) {
  struct stat status;
  return lstat(path.c_str(), &status) == 0;
}

} // namespace wipe

void Wipe::SetUp() {
  pool_ = [[NSAutoreleasePool alloc] init];
  ASSERT_TRUE(wipe::homeIsTheContainer());
  ASSERT_TRUE(wipe::util() != Nil);
  // What the SDK wrote when the library was loaded, and what the defaults make when they are first used.
  [NSUserDefaults standardUserDefaults];
  std::filesystem::remove_all(wipe::home("Library/Logs"));
  std::filesystem::remove_all(wipe::home("Library/Preferences"));
  wipe::makeFolder("Library/Preferences");
  wipe::captureLog();
}

void Wipe::TearDown() { [pool_ drain]; }
