#pragma once

#include "../Foundation/NSObject.hpp"

namespace qvsb {

class UIViewController : public NSObject {
  QVSB_HANDLE(UIViewController, NSObject)
  QVSB_METHOD(UIViewController, presentedViewController, "presentedViewController")
};

} // namespace qvsb
