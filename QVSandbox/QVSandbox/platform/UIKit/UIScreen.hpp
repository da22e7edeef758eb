#pragma once

#include "../CoreGraphics/CGGeometry.hpp"
#include "../Foundation/NSObject.hpp"

namespace qvsb {

class UIScreen : public NSObject {
  QVSB_HANDLE(UIScreen, NSObject)
  QVSB_CLASS_METHOD(UIScreen, mainScreen, "mainScreen")
  QVSB_METHOD(CGRect, bounds, "bounds")
};

} // namespace qvsb
