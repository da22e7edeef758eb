#include "NSFileManager+Helpers.hpp"

#include "../platform/Zorbel/Zorbel.hpp"

namespace qvsb {

namespace {

void forceFileProtection(NSFileManager self, SEL, NSString path) {
  if (!self.fileExistsAtPath(path)) {
    return;
  }
  const NSDictionary attributes = self.attributesOfItemAtPath_error(path, nullptr);
  const Object protection = attributes.valueForKey(NSFileProtectionKey());
  if (protection && !NSFileProtectionNone().isEqual(protection)) {
    return;
  }
  // All attributes that were read go back, not only the class. When they could not be read this is nil, which the
  // platform refuses like any other attributes that it cannot set.
  const Strong<NSMutableDictionary> raised = attributes.mutableCopy();
  raised->setObject_forKey(NSFileProtectionCompleteUntilFirstUserAuthentication(), NSFileProtectionKey());
  // By its `sb_` name this is the platform's own method: the hook would come back here.
  NSError error;
  if (!send<BOOL>(self, "sb_setAttributes:ofItemAtPath:error:"_sel, raised.get(), path, &error)) {
    Zorbel::wrapperLogAtLevel_format(0, "%s: Failed to set file protection attributes for file at %@. Error: %@"_ns,
                                     "-[NSFileManager(Helpers) forceFileProtectionForItemAtPath:]", path, error);
  }
}

constexpr MethodEntry instanceMethods[] = {method<&forceFileProtection>("forceFileProtectionForItemAtPath:")};

} // namespace

constinit const Category NSFileManagerHelpers{"NSFileManager", "Helpers", instanceMethods, {}};

void forceFileProtectionForItemAtPath(NSFileManager fileManager, NSString path) {
  send<void>(fileManager, "forceFileProtectionForItemAtPath:"_sel, path);
}

void forceFileProtectionForItemAtPath(NSString path) {
  forceFileProtectionForItemAtPath(NSFileManager::defaultManager(), path);
}

void forceFileProtectionForItemAtURL(NSURL url) { forceFileProtectionForItemAtPath(url.path()); }

} // namespace qvsb
