#pragma once

#include "UIView.hpp"

namespace qvsb {

/// Where a controller is presented as a popover, if it is.
class UIPopoverPresentationController : public NSObject {
  QVSB_HANDLE(UIPopoverPresentationController, NSObject)
  /// The view that it points at.
  QVSB_METHOD(void, setSourceView, "setSourceView:", UIView)
};

} // namespace qvsb
