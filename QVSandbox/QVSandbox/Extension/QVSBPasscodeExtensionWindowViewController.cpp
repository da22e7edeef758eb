#include "QVSBPasscodeExtensionWindowViewController.hpp"

#include "../platform/UIKit/UIDevice.hpp"
#include "../platform/UIKit/UIVisualEffectView.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/implement.hpp"
#include "PasscodeExtensionAnswer.hpp"
#include "PasscodeExtensionRequest.hpp"
#include "QVSBApplicationExtensionViewController.hpp"
#include "QVSBPasscodeExtensionManager.hpp"

namespace qvsb {

namespace {

constexpr const char* kDisplayExtension = "-[QVSBPasscodeExtensionWindowViewController displayExtension]";

QVSBPasscodeExtensionManager manager() { return QVSBPasscodeExtensionManager::sharedInstance(); }

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "QVSBPasscodeExtensionWindowViewController";
  static constexpr const char* superclassName = "UIViewController";

  Object init() { return super<Object>("init"_sel); }

  void viewWillAppear(BOOL animated) {
    super<void>("viewWillAppear:"_sel, animated);
    if (!extensionViewController_) {
      addBlur();
    }
  }

  void viewDidAppear(BOOL animated) {
    super<void>("viewDidAppear:"_sel, animated);
    if (!extensionViewController_) {
      self<QVSBPasscodeExtensionWindowViewController>().displayExtension();
    }
  }

  void displayExtension() {
    // The manager lets go of this controller when it is handed a result, which may be before this returns.
    const Strong<UIViewController> controller(self<UIViewController>());
    const NSMutableDictionary request = NSMutableDictionary::dictionary();
    const NSData key = manager().getPasscodeExtensionFK();
    if (!key) {
      refuse("%s: Passcode Extension FK is invalid."_ns);
      return;
    }
    request.setValue_forKey(key, "FK"_ns);
    const NSString pasteboardKey = manager().getActivityPasteboardKey();
    if (!pasteboardKey) {
      refuse("%s: Passcode Extension Activity PasteboardKey is invalid."_ns);
      return;
    }
    request.setValue_forKey(pasteboardKey, "ActivityPasteboardKey"_ns);
    addAppIdentity(request, manager().getAppIconData());
    const auto host = Strong<QVSBApplicationExtensionViewController>::adopt(
        QVSBApplicationExtensionViewController::alloc().initWithExtensionIdentifier_inputItems_completionHandler(
            manager().getPasscodeExtensionBundleId(), NSArray::arrayWithObject(requestItem(request)),
            makeBlock<void(BOOL, NSArray, NSError)>([](BOOL completed, NSArray returnedItems, NSError error) {
              manager().postPasscodeExtensionResult(passcodeExtensionResult(completed, returnedItems, error));
            })));
    extensionViewController_ = host;
    host->popoverPresentationController().setSourceView(controller->view());
    controller->presentViewController_animated_completion(host.get(), NO, nullptr);
  }

  BOOL shouldAutorotate() const { return manager().shouldAutorotate(); }

  BOOL shouldAutorotateToInterfaceOrientation(UIInterfaceOrientation orientation) const {
    const auto bit = static_cast<NSUInteger>(orientation);
    if (bit < 64 && manager().autoRotateToInterfaceOrientations() >> bit & 1) {
      return YES;
    }
    return orientation == UIInterfaceOrientation::portrait || isPad(UIDevice::currentDevice());
  }

  UIInterfaceOrientationMask supportedInterfaceOrientations() const {
    if (const UIInterfaceOrientationMask copied = manager().supportedInterfaceOrientations()) {
      return copied;
    }
    return isPad(UIDevice::currentDevice()) ? UIInterfaceOrientationMaskAll : UIInterfaceOrientationMaskPortrait;
  }

  QVSBApplicationExtensionViewController extensionViewController() const { return extensionViewController_; }
  void setExtensionViewController(QVSBApplicationExtensionViewController host) { extensionViewController_ = host; }

  static constexpr MethodEntry instanceMethods[] = {
      member<&Implementation::init>("init"),
      member<&Implementation::viewWillAppear>("viewWillAppear:"),
      member<&Implementation::viewDidAppear>("viewDidAppear:"),
      member<&Implementation::displayExtension>("displayExtension"),
      member<&Implementation::shouldAutorotate>("shouldAutorotate"),
      member<&Implementation::shouldAutorotateToInterfaceOrientation>("shouldAutorotateToInterfaceOrientation:"),
      member<&Implementation::supportedInterfaceOrientations>("supportedInterfaceOrientations"),
      member<&Implementation::extensionViewController>("extensionViewController"),
      member<&Implementation::setExtensionViewController>("setExtensionViewController:"),
  };

private:
  void addBlur() const {
    const UIView view = self<UIViewController>().view();
    const auto blur = Strong<UIVisualEffectView>::adopt(
        UIVisualEffectView::alloc().initWithEffect(UIBlurEffect::effectWithStyle(UIBlurEffectStyle::light)));
    blur->setFrame(view.bounds());
    blur->setAutoresizingMask(UIViewAutoresizingAll);
    view.addSubview(blur.get());
  }

  /// `format` names this method and says what the request lacks.
  static void refuse(NSString format) {
    Zorbel::wrapperLogAtLevel_format(0, format, kDisplayExtension);
    manager().postPasscodeExtensionResult(nullptr);
  }

  Strong<QVSBApplicationExtensionViewController> extensionViewController_;
};

} // namespace

Class registerQVSBPasscodeExtensionWindowViewController() { return registerClass<Implementation>(); }

} // namespace qvsb
