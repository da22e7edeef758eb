#include "QVSBPasscodeExtensionManager.hpp"

#include "../lifecycle/QVZorbelDelegate.hpp"
#include "../platform/Dispatch/dispatch.hpp"
#include "../platform/UIKit/UIActivityViewController.hpp"
#include "../platform/UIKit/UIDevice.hpp"
#include "../platform/UIKit/UIScreen.hpp"
#include "../policy/ZorbelUtil.hpp"
#include "QVSBPasscodeExtensionManagerState.hpp"

namespace qvsb {

namespace {

/// The shared instance; never released.
constinit QVSBPasscodeExtensionManager _sharedInstance;

constexpr const char* kStart = "-[QVSBPasscodeExtensionManager start]";

bool isBelow(NSString version, NSString other) {
  return version.compare_options(other, NSNumericSearch) == NSComparisonResult::orderedAscending;
}

} // namespace

QVSBPasscodeExtensionManager QVSBPasscodeExtensionManagerState::sharedInstance(Class self, SEL) {
  [[maybe_unused]] static const bool once = [self] {
    _sharedInstance =
        send<QVSBPasscodeExtensionManager>(send<QVSBPasscodeExtensionManager>(self, "alloc"_sel), "initPrivate"_sel);
    return true;
  }();
  return _sharedInstance;
}

Object QVSBPasscodeExtensionManagerState::init() {
  send<void>(self(), "release"_sel);
  return nullptr;
}

Object QVSBPasscodeExtensionManagerState::initPrivate() {
  const auto made = super<Object>("init"_sel);
  if (made) {
    // Nobody's yet: the shared instance is the one that is being made.
    _sharedInstance.setIsExtensionActive(NO);
    _sharedInstance.setExtensionWindow(nullptr);
    _sharedInstance.setWindowViewController(nullptr);
  }
  return made;
}

void QVSBPasscodeExtensionManagerState::start() {
  const Synchronized lock(self());
  if (isExtensionActive_) {
    Zorbel::wrapperLogAtLevel_format(0, "%s: Extension is already being displayed."_ns, kStart);
    return;
  }
  if (UIApplication::sharedApplication().applicationState() != UIApplicationState::active) {
    Zorbel::wrapperLogAtLevel_format(0, "%s: Application is not in active state."_ns, kStart);
    return;
  }
  isExtensionActive_ = YES;
  supportedInterfaceOrientations_ = 0;
  autoRotateToInterfaceOrientations_ = 0;
  shouldAutorotate_ = NO;
  appInfo_ = ZorbelUtil::instance().getAppInfo();
  const unsigned long round = ++round_;
  dispatch_async(dispatch_get_main_queue(),
                 makeBlock<void()>([manager = Strong<Object>(self()), round] { of(manager).show(round); }));
}

bool QVSBPasscodeExtensionManagerState::isCurrent(unsigned long round) const {
  const Synchronized lock(self());
  return isExtensionActive_ && round == round_;
}

void QVSBPasscodeExtensionManagerState::show(unsigned long round) {
  // Stopped in the meantime: nobody would take the window down again.
  if (!isCurrent(round)) {
    return;
  }
  if (!extensionWindow_) {
    extensionWindow_ = Strong<UIWindow>::adopt(UIWindow::alloc().initWithFrame(UIScreen::mainScreen().bounds()));
    appVisibleWindows_ = NSMutableArray::array();
  }
  observeWindows();
  appKeyWindow_ = UIApplication::sharedApplication().keyWindow();
  const UIViewController top = QVZorbelDelegate::getCurrentViewController(appKeyWindow_->rootViewController());
  if (top) {
    supportedInterfaceOrientations_ = top.supportedInterfaceOrientations();
    shouldAutorotate_ = top.shouldAutorotate();
  }
  appVisibleWindows_->removeAllObjects();
  extensionWindow_->setWindowLevel(UIWindowLevelAlert());
  windowViewController_ = Strong<QVSBPasscodeExtensionWindowViewController>::adopt(
      QVSBPasscodeExtensionWindowViewController::alloc().init());
  extensionWindow_->setRootViewController(windowViewController_.get());
  extensionWindow_->makeKeyAndVisible();
}

void QVSBPasscodeExtensionManagerState::stop() {
  const Synchronized lock(self());
  if (!isExtensionActive_) {
    return;
  }
  // What is remembered of the host's windows is an earlier start's until this one is shown.
  const bool wasShown = static_cast<bool>(windowViewController_);
  windowViewController_->presentedViewController().dismissViewControllerAnimated_completion(NO, nullptr);
  windowViewController_->dismissViewControllerAnimated_completion(NO, nullptr);
  stopObservingWindows();
  if (wasShown) {
    raiseLoweredWindows();
  }
  extensionWindow_->setHidden(YES);
  extensionWindow_->setRootViewController(nullptr);
  windowViewController_ = nullptr;
  isExtensionActive_ = NO;
  if (wasShown) {
    appKeyWindow_->makeKeyWindow();
  }
  UIViewController::attemptRotationToDeviceOrientation();
}

void QVSBPasscodeExtensionManagerState::postPasscodeExtensionResult(NSDictionary result) {
  self<QVSBPasscodeExtensionManager>().stop();
  ZorbelUtil::instance().postPasscodeExtensionResult(result);
}

BOOL QVSBPasscodeExtensionManagerState::isPasscodeExtensionActive() const {
  const Synchronized lock(self());
  return isExtensionActive_;
}

BOOL QVSBPasscodeExtensionManagerState::canAppDisplayPasscodeExtension() const {
  const NSString version = UIDevice::currentDevice().systemVersion();
  if (isBelow(version, "8.0"_ns)) {
    return NO;
  }
  if (!UIActivityViewController::instancesRespondToSelector("_availableActivities"_sel) ||
      !UIActivityViewController::instancesRespondToSelector("_performActivity:"_sel)) {
    return NO;
  }
  return isBelow(version, "8.3"_ns) ||
         UIActivityViewController::instancesRespondToSelector("setShouldMatchOnlyUserElectedExtensions:"_sel);
}

NSString QVSBPasscodeExtensionManagerState::getActivityPasteboardKey() const {
  return NSString::from(appInfo_->objectForKey("ActivityPasteboardKey"_ns));
}

NSData QVSBPasscodeExtensionManagerState::getAppIconData() const {
  return NSData::from(appInfo_->objectForKey("AppIconData"_ns));
}

NSString QVSBPasscodeExtensionManagerState::getPasscodeExtensionBundleId() const {
  return NSString::from(appInfo_->objectForKey("PasscodeExtensionBundleId"_ns));
}

NSData QVSBPasscodeExtensionManagerState::getPasscodeExtensionFK() const {
  return NSData::from(appInfo_->objectForKey("PasscodeExtFKData"_ns));
}

Class registerQVSBPasscodeExtensionManager() { return registerClass<QVSBPasscodeExtensionManagerState>(); }

} // namespace qvsb
