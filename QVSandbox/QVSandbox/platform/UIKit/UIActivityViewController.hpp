#pragma once

#include "../Foundation/NSArray.hpp"
#include "../objc/block.hpp"

namespace qvsb {

/// The share sheet.
class UIActivityViewController : public NSObject {
  QVSB_HANDLE(UIActivityViewController, NSObject)
  QVSB_CLASS_METHOD(BOOL, instancesRespondToSelector, "instancesRespondToSelector:", SEL)
  QVSB_METHOD(NSArray, excludedActivityTypes, "excludedActivityTypes")
  QVSB_METHOD(void, setExcludedActivityTypes, "setExcludedActivityTypes:", NSArray)
  QVSB_METHOD(void, dismissViewControllerAnimated_completion, "dismissViewControllerAnimated:completion:", BOOL,
              Block<void()>)
};

} // namespace qvsb
