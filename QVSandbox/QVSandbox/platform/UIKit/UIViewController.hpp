#pragma once

#include "../objc/block.hpp"
#include "UIInterfaceOrientation.hpp"
#include "UIPopoverPresentationController.hpp"
#include "UIView.hpp"

namespace qvsb {

class UIViewController : public NSObject {
  QVSB_HANDLE(UIViewController, NSObject)
  QVSB_METHOD(UIView, view, "view")
  QVSB_METHOD(UIViewController, presentedViewController, "presentedViewController")
  QVSB_METHOD(UIPopoverPresentationController, popoverPresentationController, "popoverPresentationController")
  /// The completion may be nil.
  QVSB_METHOD(void, presentViewController_animated_completion,
              "presentViewController:animated:completion:", UIViewController, BOOL, Block<void()>)
  /// Sent to one that presents nothing, it goes to the one that presents it.
  QVSB_METHOD(void, dismissViewControllerAnimated_completion, "dismissViewControllerAnimated:completion:", BOOL,
              Block<void()>)

  QVSB_METHOD(BOOL, shouldAutorotate, "shouldAutorotate")
  QVSB_METHOD(UIInterfaceOrientationMask, supportedInterfaceOrientations, "supportedInterfaceOrientations")
  /// Asks the controllers anew how the device may be held.
  QVSB_CLASS_METHOD(void, attemptRotationToDeviceOrientation, "attemptRotationToDeviceOrientation")
};

} // namespace qvsb
