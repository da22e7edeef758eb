// The SDK delegate's state and methods; everybody else goes through QVZorbelDelegate.hpp.
#pragma once

#include <atomic>
#include <cstdint>

#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/implement.hpp"
#include "QVZorbelDelegate.hpp"

namespace qvsb {

/// Main thread, but for `replay` and for the exit where it runs on another queue.
class QVZorbelDelegateState : public Implements<QVZorbelDelegateState> {
public:
  static constexpr const char* className = "QVZorbelDelegate";
  static constexpr const char* superclassName = "NSObject";
  static constexpr const char* protocols[] = {"ZorbelDelegate", "UIApplicationDelegate"};

  Object init();
  void dealloc() { self<QVZorbelDelegate>().removeObservers(); }

  // QVZorbelDelegate+Callbacks.cpp: what the SDK tells and asks.
  void zorbelIsReady(Zorbel sdk);
  void zorbel_authStateChangedTo_withMessage(Zorbel sdk, AuthState state, NSString message);
  void zorbel_configChangedTo(Zorbel sdk, NSDictionary config);
  void zorbel_managedPolicyChangedTo(Zorbel sdk, ManagedPolicy policy);
  void zorbel_openInPolicyChangedTo_whitelist(Zorbel sdk, OpenInPolicy policy, NSObject whitelist);
  void zorbel_pasteboardPolicyChangedTo(Zorbel sdk, PasteboardPolicy policy);
  void zorbel_printPolicyChangedTo(Zorbel sdk, PrintPolicy policy);
  BOOL isPasscodeExtensionActive() const;
  BOOL canAppDisplayPasscodeExtension() const;
  void authenticateUser() const;

  // QVZorbelDelegate+Lifecycle.cpp: the host app's life.
  void applicationDidFinishLaunchingWithOptions(NSDictionary options);
  void applicationDidBecomeActive();
  void applicationWillResignActive();
  void applicationDidEnterBackground();
  void applicationWillEnterForeground();
  void applicationWillTerminate();

  // QVZorbelDelegate+HostDelegate.cpp: what the host app is told.
  void updateWrappedZorbelState();
  void notifyAppDelegateWithZorbelState(std::int64_t state);

  // QVZorbelDelegate+Replay.cpp: launch and URLs that were held back.
  void clearInternalState();
  BOOL replayPendingActions();
  BOOL application_didFinishLaunchingWithOptions(UIApplication application, NSDictionary options);
  BOOL application_openURL_options(UIApplication application, NSURL url, NSDictionary options);

  // QVZorbelDelegate+Termination.cpp: the app's end.
  void checkIfReadyAndTerminate();
  void applicationTerminate();

  // QVZorbelDelegate+Dictation.cpp: the keyboard.
  void addObservers();
  void removeObservers();
  void didChangeKeyboardMode(Object notification);

  // QVZorbelDelegate+Window.cpp.
  UIWindow window() const { return storyboardWindow_; }
  void setWindow(UIWindow window);
  static UIViewController getCurrentViewController(Class self, SEL, UIViewController controller);

  void triggerLogsInterception();

  // The properties.
  NSDictionary launchDictionary() const { return launchDictionary_; }
  void setLaunchDictionary(NSDictionary options) { launchDictionary_ = options; }
  NSURL launchUrl() const { return launchUrl_; }
  void setLaunchUrl(NSURL url) { launchUrl_ = url; }
  NSString launchSourceApplication() const { return launchSourceApplication_; }
  void setLaunchSourceApplication(NSString application) { launchSourceApplication_ = application; }
  Object launchAnnotation() const { return launchAnnotation_; }
  void setLaunchAnnotation(Object annotation) { launchAnnotation_ = annotation; }
  unsigned char replay() const { return replay_; }
  void setReplay(unsigned char replay) { replay_ = replay; }
  Zorbel qvZorbel() const { return qvZorbel_.get(); }
  void setQvZorbel(Zorbel sdk) { qvZorbel_ = sdk; }
  UIWindow storyboardWindow() const { return storyboardWindow_; }
  void setStoryboardWindow(UIWindow window) { storyboardWindow_ = window; }
  UIWindow appKeyWindow() const { return appKeyWindow_; }
  void setAppKeyWindow(UIWindow window) { appKeyWindow_ = window; }
  std::int64_t wrappedZorbelState() const { return wrappedZorbelState_; }
  void setWrappedZorbelState(std::int64_t state) { wrappedZorbelState_ = state; }
  BOOL triggeredLog() const { return triggeredLog_; }
  void setTriggeredLog(BOOL triggered) { triggeredLog_ = triggered; }
  Object originalDelegate() const { return originalDelegate_; }
  void setOriginalDelegate(Object delegate) { originalDelegate_ = delegate; }

  static constexpr MethodEntry instanceMethods[] = {
      member<&QVZorbelDelegateState::init>("init"),
      member<&QVZorbelDelegateState::zorbelIsReady>("zorbelIsReady:"),
      member<&QVZorbelDelegateState::zorbel_authStateChangedTo_withMessage>("zorbel:authStateChangedTo:withMessage:"),
      member<&QVZorbelDelegateState::zorbel_configChangedTo>("zorbel:configChangedTo:"),
      member<&QVZorbelDelegateState::zorbel_managedPolicyChangedTo>("zorbel:managedPolicyChangedTo:"),
      member<&QVZorbelDelegateState::zorbel_openInPolicyChangedTo_whitelist>("zorbel:openInPolicyChangedTo:whitelist:"),
      member<&QVZorbelDelegateState::zorbel_pasteboardPolicyChangedTo>("zorbel:pasteboardPolicyChangedTo:"),
      member<&QVZorbelDelegateState::zorbel_printPolicyChangedTo>("zorbel:printPolicyChangedTo:"),
      member<&QVZorbelDelegateState::isPasscodeExtensionActive>("isPasscodeExtensionActive"),
      member<&QVZorbelDelegateState::canAppDisplayPasscodeExtension>("canAppDisplayPasscodeExtension"),
      member<&QVZorbelDelegateState::authenticateUser>("authenticateUser"),
      member<&QVZorbelDelegateState::applicationDidFinishLaunchingWithOptions>(
          "applicationDidFinishLaunchingWithOptions:"),
      member<&QVZorbelDelegateState::applicationDidBecomeActive>("applicationDidBecomeActive"),
      member<&QVZorbelDelegateState::applicationWillResignActive>("applicationWillResignActive"),
      member<&QVZorbelDelegateState::applicationDidEnterBackground>("applicationDidEnterBackground"),
      member<&QVZorbelDelegateState::applicationWillEnterForeground>("applicationWillEnterForeground"),
      member<&QVZorbelDelegateState::applicationWillTerminate>("applicationWillTerminate"),
      member<&QVZorbelDelegateState::updateWrappedZorbelState>("updateWrappedZorbelState"),
      member<&QVZorbelDelegateState::notifyAppDelegateWithZorbelState>("notifyAppDelegateWithZorbelState:"),
      member<&QVZorbelDelegateState::clearInternalState>("_clearInternalState"),
      member<&QVZorbelDelegateState::replayPendingActions>("_replayPendingActions"),
      member<&QVZorbelDelegateState::application_didFinishLaunchingWithOptions>(
          "_application:didFinishLaunchingWithOptions:"),
      member<&QVZorbelDelegateState::application_openURL_options>("_application:openURL:options:"),
      member<&QVZorbelDelegateState::checkIfReadyAndTerminate>("_checkIfReadyAndTerminate"),
      member<&QVZorbelDelegateState::applicationTerminate>("_applicationTerminate"),
      member<&QVZorbelDelegateState::addObservers>("addObservers"),
      member<&QVZorbelDelegateState::removeObservers>("removeObservers"),
      member<&QVZorbelDelegateState::didChangeKeyboardMode>("didChangeKeyboardMode:"),
      member<&QVZorbelDelegateState::window>("window"),
      member<&QVZorbelDelegateState::setWindow>("setWindow:"),
      member<&QVZorbelDelegateState::triggerLogsInterception>("triggerLogsInterception"),
      member<&QVZorbelDelegateState::launchDictionary>("launchDictionary"),
      member<&QVZorbelDelegateState::setLaunchDictionary>("setLaunchDictionary:"),
      member<&QVZorbelDelegateState::launchUrl>("launchUrl"),
      member<&QVZorbelDelegateState::setLaunchUrl>("setLaunchUrl:"),
      member<&QVZorbelDelegateState::launchSourceApplication>("launchSourceApplication"),
      member<&QVZorbelDelegateState::setLaunchSourceApplication>("setLaunchSourceApplication:"),
      member<&QVZorbelDelegateState::launchAnnotation>("launchAnnotation"),
      member<&QVZorbelDelegateState::setLaunchAnnotation>("setLaunchAnnotation:"),
      member<&QVZorbelDelegateState::replay>("replay"),
      member<&QVZorbelDelegateState::setReplay>("setReplay:"),
      member<&QVZorbelDelegateState::qvZorbel>("qvZorbel"),
      member<&QVZorbelDelegateState::setQvZorbel>("setQvZorbel:"),
      member<&QVZorbelDelegateState::storyboardWindow>("storyboardWindow"),
      member<&QVZorbelDelegateState::setStoryboardWindow>("setStoryboardWindow:"),
      member<&QVZorbelDelegateState::appKeyWindow>("appKeyWindow"),
      member<&QVZorbelDelegateState::setAppKeyWindow>("setAppKeyWindow:"),
      member<&QVZorbelDelegateState::wrappedZorbelState>("wrappedZorbelState"),
      member<&QVZorbelDelegateState::setWrappedZorbelState>("setWrappedZorbelState:"),
      member<&QVZorbelDelegateState::triggeredLog>("triggeredLog"),
      member<&QVZorbelDelegateState::setTriggeredLog>("setTriggeredLog:"),
      member<&QVZorbelDelegateState::originalDelegate>("originalDelegate"),
      member<&QVZorbelDelegateState::setOriginalDelegate>("setOriginalDelegate:"),
  };
  static constexpr MethodEntry classMethods[] = {
      method<&QVZorbelDelegateState::getCurrentViewController>("getCurrentViewController:"),
  };

private:
  /// The SDK, which stays for as long as the result does; nil once it has gone, and every answer of nil is 0.
  Strong<Zorbel> sdkInUse() const { return qvZorbel_.lock(); }

  void refuse(Zorbel zorbel, NSString message);
  void retire(Zorbel zorbel, NSString message);

  /// What `_applicationTerminate` has put off.
  void endProcess();

  Strong<NSDictionary> launchDictionary_;
  Strong<NSURL> launchUrl_;
  Strong<NSString> launchSourceApplication_;
  Strong<Object> launchAnnotation_;
  std::atomic<unsigned char> replay_ = 0;
  Weak<Zorbel> qvZorbel_;
  Strong<UIWindow> storyboardWindow_;
  Strong<UIWindow> appKeyWindow_;
  std::int64_t wrappedZorbelState_ = 0;
  BOOL triggeredLog_ = NO;
  Strong<Object> originalDelegate_;
};

} // namespace qvsb
