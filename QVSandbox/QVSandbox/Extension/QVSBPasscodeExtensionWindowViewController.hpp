#pragma once

#include "../platform/UIKit/UIViewController.hpp"

namespace qvsb {

/// The root of the extension window: it blurs what lies behind, has the extension answer the request, and hands the
/// manager what becomes of it. Main thread.
class QVSBPasscodeExtensionWindowViewController : public UIViewController {
  QVSB_HANDLE(QVSBPasscodeExtensionWindowViewController, UIViewController)
  QVSB_CLASS_METHOD(QVSBPasscodeExtensionWindowViewController, alloc, "alloc")
  QVSB_METHOD(QVSBPasscodeExtensionWindowViewController, init, "init")

  /// Builds the request and presents the extension; a request that lacks what it must have ends with a nil result.
  QVSB_METHOD(void, displayExtension, "displayExtension")
};

/// Makes the class known to the runtime; once, at load.
Class registerQVSBPasscodeExtensionWindowViewController();

} // namespace qvsb
