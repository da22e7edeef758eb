#pragma once

#include "../Foundation/NSArray.hpp"
#include "../Foundation/NSString.hpp"
#include "UIWindow.hpp"

extern "C" {
extern objc_object* qvsbLaunchOptionsURLKey QVSB_SYMBOL(UIApplicationLaunchOptionsURLKey);
extern objc_object* qvsbLaunchOptionsSourceApplicationKey QVSB_SYMBOL(UIApplicationLaunchOptionsSourceApplicationKey);
extern objc_object* qvsbLaunchOptionsAnnotationKey QVSB_SYMBOL(UIApplicationLaunchOptionsAnnotationKey);
}

namespace qvsb {

enum class UIApplicationState : NSInteger { active = 0, inactive = 1, background = 2 };

/// Main thread.
class UIApplication : public NSObject {
  QVSB_HANDLE(UIApplication, NSObject)
  QVSB_CLASS_METHOD(UIApplication, sharedApplication, "sharedApplication")
  QVSB_METHOD(Object, delegate, "delegate")
  QVSB_METHOD(UIApplicationState, applicationState, "applicationState")
  QVSB_METHOD(NSArray, windows, "windows")
  QVSB_METHOD(UIWindow, keyWindow, "keyWindow")
  /// The platform's own; not every release has it.
  QVSB_METHOD(void, terminateWithSuccess, "terminateWithSuccess")
};

inline NSString UIApplicationLaunchOptionsURLKey() { return NSString(qvsbLaunchOptionsURLKey); }
inline NSString UIApplicationLaunchOptionsSourceApplicationKey() {
  return NSString(qvsbLaunchOptionsSourceApplicationKey);
}
inline NSString UIApplicationLaunchOptionsAnnotationKey() { return NSString(qvsbLaunchOptionsAnnotationKey); }

} // namespace qvsb
