#pragma once

#include "UITextInputMode.hpp"
#include "UIViewController.hpp"

namespace qvsb {

/// Windows are shown by level; of two at one level, the one shown last is above.
using UIWindowLevel = CGFloat;

} // namespace qvsb

extern "C" {
extern const qvsb::UIWindowLevel qvsbWindowLevelNormal QVSB_SYMBOL(UIWindowLevelNormal);
extern const qvsb::UIWindowLevel qvsbWindowLevelAlert QVSB_SYMBOL(UIWindowLevelAlert);
// The object of each is the window.
extern objc_object* qvsbWindowDidBecomeVisibleNotification QVSB_SYMBOL(UIWindowDidBecomeVisibleNotification);
extern objc_object* qvsbWindowDidBecomeKeyNotification QVSB_SYMBOL(UIWindowDidBecomeKeyNotification);
}

namespace qvsb {

class UIWindow : public UIView {
  QVSB_HANDLE(UIWindow, UIView)
  QVSB_CLASS_METHOD(UIWindow, alloc, "alloc")
  QVSB_METHOD(UIWindow, initWithFrame, "initWithFrame:", CGRect)
  QVSB_METHOD(UIViewController, rootViewController, "rootViewController")
  QVSB_METHOD(void, setRootViewController, "setRootViewController:", UIViewController)
  QVSB_METHOD(UIWindowLevel, windowLevel, "windowLevel")
  QVSB_METHOD(void, setWindowLevel, "setWindowLevel:", UIWindowLevel)
  QVSB_METHOD(void, makeKeyWindow, "makeKeyWindow")
  QVSB_METHOD(void, makeKeyAndVisible, "makeKeyAndVisible")
  QVSB_METHOD(UITextInputMode, textInputMode, "textInputMode")
  /// Takes the keyboard away from whatever in it is being edited; with force, without asking.
  QVSB_METHOD(BOOL, endEditing, "endEditing:", BOOL)
};

inline UIWindowLevel UIWindowLevelNormal() { return qvsbWindowLevelNormal; }
inline UIWindowLevel UIWindowLevelAlert() { return qvsbWindowLevelAlert; }
inline NSString UIWindowDidBecomeVisibleNotification() { return NSString(qvsbWindowDidBecomeVisibleNotification); }
inline NSString UIWindowDidBecomeKeyNotification() { return NSString(qvsbWindowDidBecomeKeyNotification); }

} // namespace qvsb
