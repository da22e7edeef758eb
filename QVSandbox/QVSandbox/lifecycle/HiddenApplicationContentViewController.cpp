#include "HiddenApplicationContentViewController.hpp"

#include "../platform/UIKit/UIDevice.hpp"
#include "../platform/objc/implement.hpp"

namespace qvsb {

namespace {

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "HiddenApplicationContentViewController";
  static constexpr const char* superclassName = "UIViewController";

  Object initWithQVZorbelDelegate(QVZorbelDelegate owner) {
    const auto made = super<Object>("init"_sel);
    if (made) {
      of(made).owner_ = owner;
    }
    return made;
  }

  QVZorbelDelegate qvZorbelDelegate() const { return owner_.get(); }
  void setQvZorbelDelegate(QVZorbelDelegate owner) { owner_ = owner; }
  UIInterfaceOrientationMask cachedSupportedInterfaceOrientations() const { return orientations_; }
  void setCachedSupportedInterfaceOrientations(UIInterfaceOrientationMask orientations) {
    orientations_ = orientations;
  }
  BOOL cachedShouldAutorotate() const { return autorotates_; }
  void setCachedShouldAutorotate(BOOL autorotates) { autorotates_ = autorotates; }

  UIInterfaceOrientationMask supportedInterfaceOrientations() const {
    if (orientations_ != 0) {
      return orientations_;
    }
    return isPad(UIDevice::currentDevice()) ? UIInterfaceOrientationMaskAll : UIInterfaceOrientationMaskPortrait;
  }

  static constexpr MethodEntry instanceMethods[] = {
      member<&Implementation::initWithQVZorbelDelegate>("initWithQVZorbelDelegate:"),
      member<&Implementation::qvZorbelDelegate>("qvZorbelDelegate"),
      member<&Implementation::setQvZorbelDelegate>("setQvZorbelDelegate:"),
      member<&Implementation::cachedSupportedInterfaceOrientations>("cachedSupportedInterfaceOrientations"),
      member<&Implementation::setCachedSupportedInterfaceOrientations>("setCachedSupportedInterfaceOrientations:"),
      member<&Implementation::cachedShouldAutorotate>("cachedShouldAutorotate"),
      member<&Implementation::setCachedShouldAutorotate>("setCachedShouldAutorotate:"),
      member<&Implementation::supportedInterfaceOrientations>("supportedInterfaceOrientations"),
      member<&Implementation::cachedShouldAutorotate>("shouldAutorotate"),
  };

private:
  Weak<QVZorbelDelegate> owner_;
  UIInterfaceOrientationMask orientations_ = 0;
  BOOL autorotates_ = NO;
};

} // namespace

Class registerHiddenApplicationContentViewController() { return registerClass<Implementation>(); }

} // namespace qvsb
