// The manager's state and methods; everybody else goes through QVSBPasscodeExtensionManager.hpp.
#pragma once

#include <atomic>

#include "../platform/Foundation/NSArray.hpp"
#include "../platform/Foundation/NSNotification.hpp"
#include "../platform/objc/implement.hpp"
#include "QVSBPasscodeExtensionManager.hpp"
#include "QVSBPasscodeExtensionWindowViewController.hpp"

namespace qvsb {

/// `start`, `stop` and `isPasscodeExtensionActive` hold the lock on the object itself for their whole run. What `start`
/// puts off to the main queue, and the observers, run without it.
class QVSBPasscodeExtensionManagerState : public Implements<QVSBPasscodeExtensionManagerState> {
public:
  static constexpr const char* className = "QVSBPasscodeExtensionManager";
  static constexpr const char* superclassName = "NSObject";

  static QVSBPasscodeExtensionManager sharedInstance(Class self, SEL);
  /// Refused: it releases the receiver.
  Object init();
  Object initPrivate();

  void start();
  void stop();
  void postPasscodeExtensionResult(NSDictionary result);
  BOOL isPasscodeExtensionActive() const;
  BOOL canAppDisplayPasscodeExtension() const;

  // QVSBPasscodeExtensionManager+Windows.cpp: the host's windows while the extension is shown.
  void windowDidBecomeVisible(NSNotification notification);
  void windowDidBecomeKey(NSNotification notification);

  NSString getActivityPasteboardKey() const;
  NSData getAppIconData() const;
  NSString getPasscodeExtensionBundleId() const;
  NSData getPasscodeExtensionFK() const;

  // The properties.
  BOOL shouldAutorotate() const { return shouldAutorotate_; }
  void setShouldAutorotate(BOOL rotates) { shouldAutorotate_ = rotates; }
  BOOL isExtensionActive() const { return isExtensionActive_; }
  void setIsExtensionActive(BOOL active) { isExtensionActive_ = active; }
  UIWindow appKeyWindow() const { return appKeyWindow_; }
  UIInterfaceOrientationMask supportedInterfaceOrientations() const { return supportedInterfaceOrientations_; }
  void setSupportedInterfaceOrientations(UIInterfaceOrientationMask mask) { supportedInterfaceOrientations_ = mask; }
  UIInterfaceOrientationMask autoRotateToInterfaceOrientations() const { return autoRotateToInterfaceOrientations_; }
  void setAutoRotateToInterfaceOrientations(UIInterfaceOrientationMask mask) {
    autoRotateToInterfaceOrientations_ = mask;
  }
  UIWindow extensionWindow() const { return extensionWindow_; }
  void setExtensionWindow(UIWindow window) { extensionWindow_ = window; }
  QVSBPasscodeExtensionWindowViewController windowViewController() const { return windowViewController_; }
  void setWindowViewController(QVSBPasscodeExtensionWindowViewController controller) {
    windowViewController_ = controller;
  }
  NSMutableArray appVisibleWindows() const { return appVisibleWindows_; }
  void setAppVisibleWindows(NSMutableArray windows) { appVisibleWindows_ = windows; }
  NSDictionary appInfo() const { return appInfo_; }
  void setAppInfo(NSDictionary info) { appInfo_ = info; }

  static constexpr MethodEntry instanceMethods[] = {
      member<&QVSBPasscodeExtensionManagerState::init>("init"),
      member<&QVSBPasscodeExtensionManagerState::initPrivate>("initPrivate"),
      member<&QVSBPasscodeExtensionManagerState::start>("start"),
      member<&QVSBPasscodeExtensionManagerState::stop>("stop"),
      member<&QVSBPasscodeExtensionManagerState::postPasscodeExtensionResult>("postPasscodeExtensionResult:"),
      member<&QVSBPasscodeExtensionManagerState::isPasscodeExtensionActive>("isPasscodeExtensionActive"),
      member<&QVSBPasscodeExtensionManagerState::canAppDisplayPasscodeExtension>("canAppDisplayPasscodeExtension"),
      member<&QVSBPasscodeExtensionManagerState::windowDidBecomeVisible>("windowDidBecomeVisible:"),
      member<&QVSBPasscodeExtensionManagerState::windowDidBecomeKey>("windowDidBecomeKey:"),
      member<&QVSBPasscodeExtensionManagerState::getActivityPasteboardKey>("getActivityPasteboardKey"),
      member<&QVSBPasscodeExtensionManagerState::getAppIconData>("getAppIconData"),
      member<&QVSBPasscodeExtensionManagerState::getPasscodeExtensionBundleId>("getPasscodeExtensionBundleId"),
      member<&QVSBPasscodeExtensionManagerState::getPasscodeExtensionFK>("getPasscodeExtensionFK"),
      member<&QVSBPasscodeExtensionManagerState::shouldAutorotate>("shouldAutorotate"),
      member<&QVSBPasscodeExtensionManagerState::setShouldAutorotate>("setShouldAutorotate:"),
      member<&QVSBPasscodeExtensionManagerState::isExtensionActive>("isExtensionActive"),
      member<&QVSBPasscodeExtensionManagerState::setIsExtensionActive>("setIsExtensionActive:"),
      member<&QVSBPasscodeExtensionManagerState::appKeyWindow>("appKeyWindow"),
      member<&QVSBPasscodeExtensionManagerState::supportedInterfaceOrientations>("supportedInterfaceOrientations"),
      member<&QVSBPasscodeExtensionManagerState::setSupportedInterfaceOrientations>(
          "setSupportedInterfaceOrientations:"),
      member<&QVSBPasscodeExtensionManagerState::autoRotateToInterfaceOrientations>(
          "autoRotateToInterfaceOrientations"),
      member<&QVSBPasscodeExtensionManagerState::setAutoRotateToInterfaceOrientations>(
          "setAutoRotateToInterfaceOrientations:"),
      member<&QVSBPasscodeExtensionManagerState::extensionWindow>("extensionWindow"),
      member<&QVSBPasscodeExtensionManagerState::setExtensionWindow>("setExtensionWindow:"),
      member<&QVSBPasscodeExtensionManagerState::windowViewController>("windowViewController"),
      member<&QVSBPasscodeExtensionManagerState::setWindowViewController>("setWindowViewController:"),
      member<&QVSBPasscodeExtensionManagerState::appVisibleWindows>("appVisibleWindows"),
      member<&QVSBPasscodeExtensionManagerState::setAppVisibleWindows>("setAppVisibleWindows:"),
      member<&QVSBPasscodeExtensionManagerState::appInfo>("appInfo"),
      member<&QVSBPasscodeExtensionManagerState::setAppInfo>("setAppInfo:"),
  };
  static constexpr MethodEntry classMethods[] = {
      method<&QVSBPasscodeExtensionManagerState::sharedInstance>("sharedInstance"),
  };

private:
  /// What a start has put off to the main queue; `round` is the start's.
  void show(unsigned long round);
  /// Whether the extension is still wanted that this start asked for.
  bool isCurrent(unsigned long round) const;

  // QVSBPasscodeExtensionManager+Windows.cpp.
  void observeWindows();
  void stopObservingWindows();
  /// Gives the lowered windows that are still there their levels back.
  void raiseLoweredWindows();

  BOOL shouldAutorotate_ = NO;
  // The observers ask without the lock.
  std::atomic<BOOL> isExtensionActive_ = NO;
  Strong<UIWindow> appKeyWindow_;
  UIInterfaceOrientationMask supportedInterfaceOrientations_ = 0;
  UIInterfaceOrientationMask autoRotateToInterfaceOrientations_ = 0;
  Strong<UIWindow> extensionWindow_;
  Strong<QVSBPasscodeExtensionWindowViewController> windowViewController_;
  Strong<NSMutableArray> appVisibleWindows_;
  Strong<NSDictionary> appInfo_;
  /// How many starts were accepted.
  unsigned long round_ = 0;
};

} // namespace qvsb
