#include "../platform/Foundation/NSBundle.hpp"
#include "../platform/UIKit/UINavigationController.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

void QVZorbelDelegateState::setWindow(UIWindow window) {
  if (NSBundle::mainBundle().infoDictionary().objectForKey("UIMainStoryboardFile"_ns)) {
    Zorbel::wrapperLogAtLevel_format(
        0,
        "(%s) The App's Info.plist contains UIMainStoryboardFile but the App's delegate does not declare "
        "UIApplicationDelegate.window property. App's behavior is undefined and it may even crash."_ns,
        "-[QVZorbelDelegate setWindow:]");
  }
  storyboardWindow_ = window;
}

UIViewController QVZorbelDelegateState::getCurrentViewController(Class, SEL, UIViewController controller) {
  for (UIViewController next = controller.presentedViewController(); next;
       next = controller.presentedViewController()) {
    const bool navigates = next.isKindOfClass(UINavigationController::classObject());
    controller =
        navigates ? UIViewController::from(UINavigationController::from(next).viewControllers().lastObject()) : next;
  }
  return controller;
}

} // namespace qvsb
