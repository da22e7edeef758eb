#import "Writing.h"

#include <string_view>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace bench {

namespace {

constexpr NSUInteger size = 1024;
constexpr const char *attribute = "user.qv.protection";
constexpr std::string_view raisedClass = "NSFileProtectionCompleteUntilFirstUserAuthentication";

} // namespace

Writing::Writing(NSString *name) {
  NSString *const documents =
      [NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, YES) objectAtIndex:0];
  path_ = [[documents stringByAppendingPathComponent:name] copy];
  data_ = [[NSMutableData alloc] initWithLength:size];
}

Writing::~Writing() {
  [data_ release];
  [path_ release];
}

BOOL Writing::byHand() const {
  const BOOL written = [data_ sb_writeToFile:path_ atomically:YES];
  if (written) raiseByHand();
  return written;
}

void Writing::raiseByHand() const {
  NSFileManager *const fileManager = [NSFileManager defaultManager];
  if (![fileManager fileExistsAtPath:path_]) return;
  NSDictionary *const attributes = [fileManager attributesOfItemAtPath:path_ error:NULL];
  NSString *const protection = [attributes valueForKey:NSFileProtectionKey];
  if (protection && ![NSFileProtectionNone isEqual:protection]) return;
  NSMutableDictionary *const raised = [attributes mutableCopy];
  [raised setObject:NSFileProtectionCompleteUntilFirstUserAuthentication forKey:NSFileProtectionKey];
  NSError *error = nil;
  if (![fileManager sb_setAttributes:raised ofItemAtPath:path_ error:&error])
    NSLog(@"Failed to set file protection attributes for file at %@. Error: %@", path_, error);
  [raised release];
}

BOOL Writing::bare() const {
  const BOOL written = [data_ sb_writeToFile:path_ atomically:YES];
  if (written) raiseWithBareCalls(cPath());
  return written;
}

void raiseWithBareCalls(const char *path) {
  struct stat status;
  char stored[64];
  if (stat(path, &status) != 0 || getxattr(path, attribute, stored, sizeof stored) >= 0) return;
  setxattr(path, attribute, raisedClass.data(), raisedClass.size(), 0);
}

NSString *storedClass(const char *path) {
  char stored[64];
  const ssize_t length = getxattr(path, attribute, stored, sizeof stored - 1);
  if (length < 0) return @"";
  stored[length] = '\0';
  return [NSString stringWithUTF8String:stored];
}

} // namespace bench
