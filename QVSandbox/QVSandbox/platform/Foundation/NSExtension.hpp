#pragma once

#include "../UIKit/UIViewController.hpp"
#include "../objc/block.hpp"
#include "NSArray.hpp"
#include "NSError.hpp"

namespace qvsb {

/// An app's extension, which runs in a process of its own. The platform's own interface. What becomes of a request is
/// told on any thread; a request identifier is an object that says nothing here.
class NSExtension : public NSObject {
  QVSB_HANDLE(NSExtension, NSObject)
  /// nil, with an error, when no installed app brings an extension with that bundle identifier.
  QVSB_CLASS_METHOD(NSExtension, extensionWithIdentifier_error, "extensionWithIdentifier:error:", NSString, NSError*)

  /// The extension's process went away.
  QVSB_METHOD(void, setRequestInterruptionBlock, "setRequestInterruptionBlock:", Block<void(Object)>)
  QVSB_METHOD(void, setRequestCancellationBlock, "setRequestCancellationBlock:", Block<void(Object, NSError)>)
  /// With the items that the extension returned.
  QVSB_METHOD(void, setRequestCompletionBlock, "setRequestCompletionBlock:", Block<void(Object, NSArray)>)

  /// Begins a request. The handler is given the controller to be shown, or an error.
  QVSB_METHOD(void, instantiateViewControllerWithInputItems_connectionHandler,
              "instantiateViewControllerWithInputItems:connectionHandler:", NSArray,
              Block<void(Object, UIViewController, NSError)>)
};

} // namespace qvsb
