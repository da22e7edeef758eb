#include "../platform/Foundation/NSNotificationCenter.hpp"
#include "../platform/UIKit/UIApplication.hpp"
#include "AppWindowInfo.hpp"
#include "QVSBPasscodeExtensionManagerState.hpp"

namespace qvsb {

namespace {

bool isAmongTheAppsWindows(UIWindow window) {
  const Strong<NSArray> windows = UIApplication::sharedApplication().windows();
  for (NSUInteger i = 0; i < windows->count(); ++i) {
    if (windows->objectAtIndex(i) == window) {
      return true;
    }
  }
  return false;
}

} // namespace

void QVSBPasscodeExtensionManagerState::observeWindows() {
  const NSNotificationCenter center = NSNotificationCenter::defaultCenter();
  center.addObserver_selector_name_object(self(), "windowDidBecomeVisible:"_sel, UIWindowDidBecomeVisibleNotification(),
                                          nullptr);
  center.addObserver_selector_name_object(self(), "windowDidBecomeKey:"_sel, UIWindowDidBecomeKeyNotification(),
                                          nullptr);
}

void QVSBPasscodeExtensionManagerState::stopObservingWindows() {
  const NSNotificationCenter center = NSNotificationCenter::defaultCenter();
  center.removeObserver_name_object(self(), UIWindowDidBecomeVisibleNotification(), nullptr);
  center.removeObserver_name_object(self(), UIWindowDidBecomeKeyNotification(), nullptr);
}

void QVSBPasscodeExtensionManagerState::windowDidBecomeVisible(NSNotification notification) {
  const UIWindow window = UIWindow::from(notification.object());
  if (!isExtensionActive_ || window == extensionWindow_.get()) {
    return;
  }
  // The keyboard stays usable.
  if (window.isKindOfClass(classNamed<"UITextEffectsWindow">())) {
    return;
  }
  const UIWindowLevel level = window.windowLevel();
  const UIWindowLevel ours = extensionWindow_->windowLevel();
  if (level > ours) {
    const auto info = Strong<AppWindowInfo>::adopt(AppWindowInfo::alloc().init());
    info->setAppWindow(window);
    info->setAppWindowLevel(level);
    appVisibleWindows_->addObject(info.get());
    window.setWindowLevel(UIWindowLevelNormal());
    extensionWindow_->makeKeyAndVisible();
  } else if (level == ours) {
    // Of two at one level, the one that is shown last is above.
    extensionWindow_->makeKeyAndVisible();
  }
}

void QVSBPasscodeExtensionManagerState::windowDidBecomeKey(NSNotification notification) {
  const UIWindow window = UIWindow::from(notification.object());
  if (!isExtensionActive_ || window == extensionWindow_.get()) {
    return;
  }
  // An alert is answered in a window of its own.
  if (window.isKindOfClass(classNamed<"_UIAlertControllerShimPresenterWindow">())) {
    return;
  }
  appKeyWindow_ = window;
  extensionWindow_->makeKeyWindow();
}

void QVSBPasscodeExtensionManagerState::raiseLoweredWindows() {
  const Strong<NSMutableArray> lowered = appVisibleWindows_;
  for (NSUInteger i = 0; i < lowered->count(); ++i) {
    const AppWindowInfo info = AppWindowInfo::from(lowered->objectAtIndex(i));
    const UIWindow window = info.appWindow();
    if (window && isAmongTheAppsWindows(window)) {
      window.setWindowLevel(info.appWindowLevel());
    }
  }
}

} // namespace qvsb
