#import "DataProtection.h"

#import <QVDevice/QVDevice.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/xattr.h>

NSFileAttributeKey const NSFileProtectionKey = @"NSFileProtectionKey";
NSFileProtectionType const NSFileProtectionNone = @"NSFileProtectionNone";
NSFileProtectionType const NSFileProtectionComplete = @"NSFileProtectionComplete";
NSFileProtectionType const NSFileProtectionCompleteUnlessOpen = @"NSFileProtectionCompleteUnlessOpen";
NSFileProtectionType const NSFileProtectionCompleteUntilFirstUserAuthentication =
    @"NSFileProtectionCompleteUntilFirstUserAuthentication";

namespace qvdevice {
namespace {

// An extended attribute moves with the item and is seen by every process of the device.
constexpr const char *attributeName = "user.qv.protection";

struct ProtectionClass {
  std::string_view name;
  NSFileProtectionType const *constant;
  NSUInteger option;
};

const ProtectionClass classes[] = {
    {"NSFileProtectionNone", &NSFileProtectionNone, NSDataWritingFileProtectionNone},
    {"NSFileProtectionComplete", &NSFileProtectionComplete, NSDataWritingFileProtectionComplete},
    {"NSFileProtectionCompleteUnlessOpen", &NSFileProtectionCompleteUnlessOpen,
     NSDataWritingFileProtectionCompleteUnlessOpen},
    {"NSFileProtectionCompleteUntilFirstUserAuthentication", &NSFileProtectionCompleteUntilFirstUserAuthentication,
     NSDataWritingFileProtectionCompleteUntilFirstUserAuthentication},
};

std::string_view storedForm(NSFileProtectionType protection) {
  for (const ProtectionClass &each : classes)
    if (*each.constant == protection) return each.name;
  return {};
}

} // namespace

NSFileProtectionType protectionNamed(id name) {
  for (const ProtectionClass &each : classes)
    if (*each.constant == name) return *each.constant;
  if (![name isKindOfClass:[NSString class]]) return nil;
  for (const ProtectionClass &each : classes)
    if ([name isEqualToString:*each.constant]) return *each.constant;
  return nil;
}

NSFileProtectionType protectionInOptions(NSUInteger options) {
  const NSUInteger asked = options & NSDataWritingFileProtectionMask;
  for (const ProtectionClass &each : classes)
    if (each.option == asked) return *each.constant;
  return nil;
}

NSFileProtectionType defaultProtection() {
  static NSFileProtectionType const setting = [] {
    NSString *const name = [QVDeviceSettings() objectForKey:@"defaultProtection"];
    return name ? protectionNamed(name) : NSFileProtectionNone;
  }();
  return setting;
}

NSFileProtectionType storedProtection(const char *path) {
  char stored[64];
  const ssize_t length = getxattr(path, attributeName, stored, sizeof stored);
  if (length <= 0) return nil;
  const std::string_view name(stored, static_cast<size_t>(length));
  for (const ProtectionClass &each : classes)
    if (each.name == name) return *each.constant;
  return nil;
}

int storeProtection(const char *path, NSFileProtectionType protection) {
  const std::string_view name = storedForm(protection);
  // Most items have no class yet; only for the others does the old one have to be asked for.
  NSFileProtectionType before = nil;
  if (setxattr(path, attributeName, name.data(), name.size(), XATTR_CREATE) != 0) {
    if (errno != EEXIST) return errno;
    before = storedProtection(path);
    if (before == protection) return 0;
    if (setxattr(path, attributeName, name.data(), name.size(), 0) != 0) return errno;
  }
  traceProtection(path, before, protection);
  return 0;
}

int storeProtection(int descriptor, NSFileProtectionType protection) {
  const std::string_view name = storedForm(protection);
  return fsetxattr(descriptor, attributeName, name.data(), name.size(), 0) == 0 ? 0 : errno;
}

void traceProtection(const char *path, NSFileProtectionType from, NSFileProtectionType to) {
  static const bool tracing = std::getenv("QVDEVICE_TRACE_FD") != nullptr;
  if (!tracing) return;
  NSString *shown = [NSString stringWithUTF8String:path];
  NSString *const container = [QVDeviceContainer() stringByAppendingString:@"/"];
  if ([shown hasPrefix:container]) shown = [shown substringFromIndex:[container length]];
  QVDeviceTrace(@{@"kind" : @"protection", @"path" : shown, @"from" : from ? (id)from : (id)[NSNull null], @"to" : to});
}

} // namespace qvdevice
