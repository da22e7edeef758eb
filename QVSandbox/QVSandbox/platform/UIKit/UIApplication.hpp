#pragma once

#include "../Foundation/NSString.hpp"

extern "C" {
extern objc_object* qvsbLaunchOptionsURLKey QVSB_SYMBOL(UIApplicationLaunchOptionsURLKey);
extern objc_object* qvsbLaunchOptionsSourceApplicationKey QVSB_SYMBOL(UIApplicationLaunchOptionsSourceApplicationKey);
extern objc_object* qvsbLaunchOptionsAnnotationKey QVSB_SYMBOL(UIApplicationLaunchOptionsAnnotationKey);
}

namespace qvsb {

/// Main thread.
class UIApplication : public NSObject {
  QVSB_HANDLE(UIApplication, NSObject)
  QVSB_CLASS_METHOD(UIApplication, sharedApplication, "sharedApplication")
  QVSB_METHOD(Object, delegate, "delegate")
  /// The platform's own; not every release has it.
  QVSB_METHOD(void, terminateWithSuccess, "terminateWithSuccess")
};

inline NSString UIApplicationLaunchOptionsURLKey() { return NSString(qvsbLaunchOptionsURLKey); }
inline NSString UIApplicationLaunchOptionsSourceApplicationKey() {
  return NSString(qvsbLaunchOptionsSourceApplicationKey);
}
inline NSString UIApplicationLaunchOptionsAnnotationKey() { return NSString(qvsbLaunchOptionsAnnotationKey); }

} // namespace qvsb
