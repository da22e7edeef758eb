#import "FileName.h"

#include <string>

namespace qvdevice {
namespace {

// A byte from 0x80 on is the last six bits of the character and the lowest of those before them.
constexpr char lead = '\xef', lower = '\x9e', upper = '\x9f';

bool standsForAByte(std::string_view bytes) {
  return bytes.size() >= 3 && bytes[0] == lead && (bytes[1] == lower || bytes[1] == upper);
}

// The length of the character that begins the bytes, 0 when they are no UTF-8 there or stand for a byte.
std::size_t characterLength(std::string_view bytes) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
  const unsigned char first = byte(0);
  if (first < 0x80) return 1;
  const std::size_t length = first < 0xc2 ? 0 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : first < 0xf5 ? 4 : 0;
  if (length == 0 || length > bytes.size()) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((byte(i) & 0xc0) != 0x80) return 0;
  // Forms that are longer than need be, surrogates, and what lies above the last character.
  const bool wrong = (first == 0xe0 && byte(1) < 0xa0) || (first == 0xed && byte(1) >= 0xa0) ||
                     (first == 0xf0 && byte(1) < 0x90) || (first == 0xf4 && byte(1) >= 0x90);
  return wrong || standsForAByte(bytes) ? 0 : length;
}

} // namespace

bool isAscii(std::string_view bytes) {
  unsigned char all = 0;
  for (const char byte : bytes)
    all |= static_cast<unsigned char>(byte);
  return all < 0x80;
}

NSString *fileName(std::string_view bytes) {
  static Class const string = [NSString class];
  if (isAscii(bytes))
    return [[[string alloc] initWithBytes:bytes.data() length:bytes.size() encoding:NSUTF8StringEncoding] autorelease];
  std::string utf8;
  utf8.reserve(bytes.size());
  while (!bytes.empty()) {
    std::size_t length = characterLength(bytes);
    if (length != 0) {
      utf8 += bytes.substr(0, length);
    } else {
      const auto byte = static_cast<unsigned char>(bytes[0]);
      utf8 += {lead, byte < 0xc0 ? lower : upper, static_cast<char>(0x80 | (byte & 0x3f))};
      length = 1;
    }
    bytes.remove_prefix(length);
  }
  return [[[string alloc] initWithBytes:utf8.data() length:utf8.size() encoding:NSUTF8StringEncoding] autorelease];
}

void restoreFileName(char *utf8) {
  char *to = utf8;
  for (const char *from = utf8; *from;) {
    if (standsForAByte({from, from[1] && from[2] ? 3u : 1u})) {
      *to++ = from[1] == lower ? from[2] : static_cast<char>(from[2] + 0x40);
      from += 3;
    } else {
      *to++ = *from++;
    }
  }
  *to = '\0';
}

} // namespace qvdevice
