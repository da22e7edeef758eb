#include "QVSBApplicationExtensionViewController.hpp"

#include <atomic>

#include "../platform/Dispatch/dispatch.hpp"
#include "../platform/Foundation/NSAssertionHandler.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/implement.hpp"

namespace qvsb {

namespace {

constexpr const char* kPresentExtension = "-[QVSBApplicationExtensionViewController presentExtension]";
constexpr const char* kRequestBlock = "-[QVSBApplicationExtensionViewController presentExtension]_block_invoke";

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "QVSBApplicationExtensionViewController";
  static constexpr const char* superclassName = "UIViewController";

  Object initWithExtensionIdentifier_inputItems_completionHandler(NSString identifier, NSArray inputItems,
                                                                  ExtensionCompletion completionHandler) {
    require(static_cast<bool>(identifier), "identifier != nil"_ns, 48);
    require(inputItems.count() > 0, "inputItems.count > 0"_ns, 49);
    require(static_cast<bool>(completionHandler), "completionHandler != NULL"_ns, 50);
    const auto made = super<Object>("initWithNibName:bundle:"_sel, NSString(), Object());
    if (made) {
      auto& state = of(made);
      state.identifier_ = identifier;
      state.inputItems_ = inputItems;
      state.handler_ = completionHandler;
    }
    return made;
  }

  void viewWillAppear(BOOL animated) {
    super<void>("viewWillAppear:"_sel, animated);
    if (!extension_) {
      self<QVSBApplicationExtensionViewController>().presentExtension();
    }
  }

  void presentExtension() {
    // Whoever is told of a failure may let go of this controller, and of the extension with it.
    const Strong<Object> host(self());
    NSError error;
    extension_ = NSExtension::from(NSExtension::extensionWithIdentifier_error(identifier_.get(), &error));
    const Strong<NSExtension> extension = extension_;
    if (!extension) {
      Zorbel::wrapperLogAtLevel_format(0, "%s Failed to instantiate extension: %@"_ns, kPresentExtension, error);
      report(NO, nullptr, error);
      return;
    }
    const Weak<Object> weakHost(host);
    extension->setRequestInterruptionBlock(makeBlock<void(Object)>([weakHost](Object) {
      Zorbel::wrapperLogAtLevel_format(0, "%s Interrupted"_ns, kRequestBlock);
      dispatch_async(
          dispatch_get_main_queue(), makeBlock<void()>([weakHost] {
            reportTo(weakHost, NO, nullptr,
                     NSError::errorWithDomain_code_userInfo(NSCocoaErrorDomain(), NSXPCConnectionInterrupted, nullptr));
          }));
    }));
    extension->setRequestCancellationBlock(makeBlock<void(Object, NSError)>([weakHost](Object, NSError cancellation) {
      Zorbel::wrapperLogAtLevel_format(0, "%s Cancelled"_ns, kRequestBlock);
      dispatch_async(dispatch_get_main_queue(), makeBlock<void()>([weakHost, why = Strong<NSError>(cancellation)] {
                       reportTo(weakHost, NO, nullptr, why);
                     }));
    }));
    extension->setRequestCompletionBlock(makeBlock<void(Object, NSArray)>([weakHost](Object, NSArray returned) {
      Zorbel::wrapperLogAtLevel_format(5, "%s Completed"_ns, kRequestBlock);
      dispatch_async(dispatch_get_main_queue(), makeBlock<void()>([weakHost, items = Strong<NSArray>(returned)] {
                       reportTo(weakHost, YES, items, nullptr);
                     }));
    }));
    extension->instantiateViewControllerWithInputItems_connectionHandler(
        inputItems_.get(),
        makeBlock<void(Object, UIViewController, NSError)>(
            [weakHost](Object, UIViewController controller, NSError failure) {
              if (controller) {
                Zorbel::wrapperLogAtLevel_format(5, "%s Presenting view controller"_ns, kPresentExtension);
                UIViewController::from(weakHost.lock().get())
                    .presentViewController_animated_completion(controller, YES, nullptr);
              } else {
                Zorbel::wrapperLogAtLevel_format(0, "%s Failed to instantiate view controller: %@"_ns,
                                                 kPresentExtension, failure);
                reportTo(weakHost, NO, nullptr, failure);
              }
            }));
  }

  NSString identifier() const { return identifier_; }
  NSArray inputItems() const { return inputItems_; }
  ExtensionCompletion handler() const { return handler_; }
  NSExtension extension() const { return extension_; }
  void setExtension(NSExtension extension) { extension_ = extension; }

  static constexpr MethodEntry instanceMethods[] = {
      member<&Implementation::initWithExtensionIdentifier_inputItems_completionHandler>(
          "initWithExtensionIdentifier:inputItems:completionHandler:"),
      member<&Implementation::viewWillAppear>("viewWillAppear:"),
      member<&Implementation::presentExtension>("presentExtension"),
      member<&Implementation::identifier>("identifier"),
      member<&Implementation::inputItems>("inputItems"),
      member<&Implementation::handler>("handler"),
      member<&Implementation::extension>("extension"),
      member<&Implementation::setExtension>("setExtension:"),
  };

private:
  /// A parameter assertion of the initialiser's. The handler need not raise.
  void require(bool holds, NSString condition, NSInteger line) const {
    if (holds) {
      return;
    }
    NSString file =
        NSString::stringWithUTF8String("QVSandbox/QVSandbox/Extension/QVSBApplicationExtensionViewController");
    if (!file) {
      file = "<Unknown File>"_ns;
    }
    NSAssertionHandler::currentHandler().handleFailureInMethod_object_file_lineNumber_description(
        "initWithExtensionIdentifier:inputItems:completionHandler:"_sel, self(), file, line,
        "Invalid parameter not satisfying: %@"_ns, condition);
  }

  /// Tells what became of the request, if nobody has been told.
  void report(BOOL completed, NSArray returnedItems, NSError error) {
    if (handler_ && !reported_.exchange(true)) {
      handler_.get()(completed, returnedItems, error);
    }
  }

  /// A host that has gone is not told.
  static void reportTo(const Weak<Object>& weakHost, BOOL completed, NSArray returnedItems, NSError error) {
    if (const Strong<Object> host = weakHost.lock()) {
      of(host).report(completed, returnedItems, error);
    }
  }

  Strong<NSString> identifier_;
  Strong<NSArray> inputItems_;
  Copied<ExtensionCompletion> handler_;
  Strong<NSExtension> extension_;
  // A request may end on several threads at once: its process dies while its answer is on the way.
  std::atomic<bool> reported_ = false;
};

} // namespace

Class registerQVSBApplicationExtensionViewController() { return registerClass<Implementation>(); }

} // namespace qvsb
