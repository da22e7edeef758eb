#pragma once

#include "../platform/Foundation/NSExtension.hpp"

namespace qvsb {

/// Called with whether the extension completed, what it returned then, and the error otherwise.
using ExtensionCompletion = Block<void(BOOL, NSArray, NSError)>;

/// Launches an app extension when it is first shown, presents the extension's own view controller on itself, and tells
/// once what became of it. Main thread; the completion handler is called there, too, except that a view controller
/// that could not be made is reported on the thread that the platform tells it on.
class QVSBApplicationExtensionViewController : public UIViewController {
  QVSB_HANDLE(QVSBApplicationExtensionViewController, UIViewController)
  QVSB_CLASS_METHOD(QVSBApplicationExtensionViewController, alloc, "alloc")
  /// The extension's bundle identifier, NSExtensionItems, and the handler, of which it keeps a copy. None may be
  /// missing; the current assertion handler hears of each that is.
  QVSB_METHOD(QVSBApplicationExtensionViewController, initWithExtensionIdentifier_inputItems_completionHandler,
              "initWithExtensionIdentifier:inputItems:completionHandler:", NSString, NSArray, ExtensionCompletion)
  QVSB_METHOD(void, presentExtension, "presentExtension")
};

/// Makes the class known to the runtime; once, at load.
Class registerQVSBApplicationExtensionViewController();

} // namespace qvsb
