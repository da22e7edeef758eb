#pragma once

#include "NSArray.hpp"
#include "NSDictionary.hpp"
#include "NSError.hpp"

extern "C" {
extern objc_object* qvsbFileProtectionKey QVSB_SYMBOL(NSFileProtectionKey);
extern objc_object* qvsbFileProtectionNone QVSB_SYMBOL(NSFileProtectionNone);
extern objc_object* qvsbFileProtectionCompleteUntilFirstUserAuthentication
    QVSB_SYMBOL(NSFileProtectionCompleteUntilFirstUserAuthentication);
}

namespace qvsb {

inline NSString NSFileProtectionKey() { return NSString(qvsbFileProtectionKey); }
inline NSString NSFileProtectionNone() { return NSString(qvsbFileProtectionNone); }
inline NSString NSFileProtectionCompleteUntilFirstUserAuthentication() {
  return NSString(qvsbFileProtectionCompleteUntilFirstUserAuthentication);
}

class NSFileManager : public NSObject {
  QVSB_HANDLE(NSFileManager, NSObject)
  QVSB_CLASS_METHOD(NSFileManager, defaultManager, "defaultManager")
  /// Of a link: whether its destination exists.
  QVSB_METHOD(BOOL, fileExistsAtPath, "fileExistsAtPath:", NSString)
  /// Names as NSString, in no particular order.
  QVSB_METHOD(NSArray, contentsOfDirectoryAtPath_error, "contentsOfDirectoryAtPath:error:", NSString, NSError*)
  /// Everything beneath the folder, a folder before what it holds; links are listed and not followed.
  QVSB_METHOD(NSArray, subpathsAtPath, "subpathsAtPath:", NSString)
  /// Nil unless there is a link.
  QVSB_METHOD(NSString, destinationOfSymbolicLinkAtPath_error, "destinationOfSymbolicLinkAtPath:error:", NSString,
              NSError*)
  QVSB_METHOD(BOOL, removeItemAtPath_error, "removeItemAtPath:error:", NSString, NSError*)
  QVSB_METHOD(NSDictionary, attributesOfItemAtPath_error, "attributesOfItemAtPath:error:", NSString, NSError*)
};

} // namespace qvsb
