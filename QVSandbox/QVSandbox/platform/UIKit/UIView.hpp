#pragma once

#include "../CoreGraphics/CGGeometry.hpp"
#include "../Foundation/NSObject.hpp"

namespace qvsb {

/// How a view follows when the one around it changes its size.
using UIViewAutoresizing = NSUInteger;
/// All margins, width and height.
inline constexpr UIViewAutoresizing UIViewAutoresizingAll = 63;

class UIView : public NSObject {
  QVSB_HANDLE(UIView, NSObject)
  QVSB_METHOD(CGRect, bounds, "bounds")
  QVSB_METHOD(void, setFrame, "setFrame:", CGRect)
  QVSB_METHOD(void, setAutoresizingMask, "setAutoresizingMask:", UIViewAutoresizing)
  QVSB_METHOD(void, addSubview, "addSubview:", UIView)
  QVSB_METHOD(void, setHidden, "setHidden:", BOOL)
};

} // namespace qvsb
