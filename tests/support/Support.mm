#include "Support.h"

#include <atomic>
#include <sys/xattr.h>

namespace support {

std::string storedClass(NSString *path) {
  char value[128];
  const ssize_t length = getxattr([path fileSystemRepresentation], "user.qv.protection", value, sizeof value);
  return length > 0 ? std::string(value, static_cast<size_t>(length)) : std::string();
}

void storeClass(NSString *path, const char *protectionClass) {
  setxattr([path fileSystemRepresentation], "user.qv.protection", protectionClass,
           std::char_traits<char>::length(protectionClass), 0);
}

NSString *freshFolder() {
  static std::atomic<int> count{0};
  NSString *name = [NSString stringWithFormat:@"test-%d", count++];
  NSString *path = [NSTemporaryDirectory() stringByAppendingPathComponent:name];
  [[NSFileManager defaultManager] createDirectoryAtPath:path withIntermediateDirectories:YES attributes:nil error:NULL];
  return path;
}

std::string text(NSString *string) { return string ? [string UTF8String] : "(nil)"; }

bool exists(NSString *path) { return [[NSFileManager defaultManager] fileExistsAtPath:path]; }

} // namespace support
