#pragma once

#include "../Foundation/NSArray.hpp"
#include "UIViewController.hpp"

namespace qvsb {

class UINavigationController : public UIViewController {
  QVSB_HANDLE(UINavigationController, UIViewController)
  QVSB_METHOD(NSArray, viewControllers, "viewControllers")
};

} // namespace qvsb
