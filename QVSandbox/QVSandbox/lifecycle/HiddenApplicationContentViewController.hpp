#pragma once

#include "QVZorbelDelegate.hpp"

namespace qvsb {

/// The root of a window that covers the host app's content: it shows nothing and settles only how the window rotates.
/// Main thread.
class HiddenApplicationContentViewController : public NSObject {
  QVSB_HANDLE(HiddenApplicationContentViewController, NSObject)
  QVSB_CLASS_METHOD(HiddenApplicationContentViewController, alloc, "alloc")
  QVSB_METHOD(HiddenApplicationContentViewController, initWithQVZorbelDelegate,
              "initWithQVZorbelDelegate:", QVZorbelDelegate)

  /// The owner, which it does not keep.
  QVSB_METHOD(QVZorbelDelegate, qvZorbelDelegate, "qvZorbelDelegate")
  QVSB_METHOD(void, setQvZorbelDelegate, "setQvZorbelDelegate:", QVZorbelDelegate)
  /// The orientations to answer with; 0 leaves it to the device: all on a pad, portrait on a phone.
  QVSB_METHOD(UIInterfaceOrientationMask, cachedSupportedInterfaceOrientations, "cachedSupportedInterfaceOrientations")
  QVSB_METHOD(void, setCachedSupportedInterfaceOrientations,
              "setCachedSupportedInterfaceOrientations:", UIInterfaceOrientationMask)
  /// Whether it rotates; NO until set.
  QVSB_METHOD(BOOL, cachedShouldAutorotate, "cachedShouldAutorotate")
  QVSB_METHOD(void, setCachedShouldAutorotate, "setCachedShouldAutorotate:", BOOL)
};

/// Makes the class known to the runtime; once, at load.
Class registerHiddenApplicationContentViewController();

} // namespace qvsb
