// What the SDK tells and asks its delegate. The SDK is kept for the length of a callback: the host, which is told of
// most of them, may give up the last reference. An exception that the host raises goes on to the SDK, but not before
// the rest of the callback has been done: what guards the app's data must not depend on the host's manners.
#include "../diagnostics/SBUtil.hpp"
#include "../platform/Foundation/NSNotificationCenter.hpp"
#include "../platform/UIKit/UIPasteboard.hpp"
#include "../platform/objc/exception.hpp"
#include "../policy/SBZorbelConfigHelper.hpp"
#include "../policy/ZorbelUtil.hpp"
#include "HostConfiguration.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

namespace {

NSInteger numberOf(auto value) { return static_cast<NSInteger>(value); }

/// The guard hears of changes to the pasteboard as long as nothing may leave the app through it.
void watchPasteboard(PasteboardPolicy policy) {
  const ZorbelUtil guard = ZorbelUtil::instance();
  const bool wanted = policy == PasteboardPolicy::unauthorized;
  const bool registered = guard.registeredForPasteboardChangeNotification();
  if (wanted == registered) {
    return;
  }
  guard.setRegisteredForPasteboardChangeNotification(wanted ? YES : NO);
  const NSNotificationCenter center = NSNotificationCenter::defaultCenter();
  const UIPasteboard pasteboard = UIPasteboard::generalPasteboard();
  if (wanted) {
    center.addObserver_selector_name_object(guard, "pasteboardContentChanged:"_sel, UIPasteboardChangedNotification(),
                                            pasteboard);
  } else {
    center.removeObserver_name_object(guard, UIPasteboardChangedNotification(), pasteboard);
  }
}

} // namespace

void QVZorbelDelegateState::zorbelIsReady(Zorbel sdk) {
  const Strong<Zorbel> zorbel = sdk;
  const auto delegate = self<QVZorbelDelegate>();
  delegate._checkIfReadyAndTerminate();
  delegate.triggerLogsInterception();
  tryFinally([&] { tryFinally([&] { giveConfiguration(zorbel); }, [&] { delegate.updateWrappedZorbelState(); }); },
             [&] {
               // Allowed or not, a guard that is already there stays: only a change of policy takes it away.
               if (zorbel->pasteboardPolicy() == PasteboardPolicy::unauthorized) {
                 watchPasteboard(PasteboardPolicy::unauthorized);
               }
             });
}

void QVZorbelDelegateState::zorbel_authStateChangedTo_withMessage(Zorbel sdk, AuthState state, NSString message) {
  const Strong<Zorbel> zorbel = sdk;
  const auto delegate = self<QVZorbelDelegate>();
  Zorbel::wrapperLogAtLevel_format(3, "Auth state changed: %@"_ns, SBUtil::stringForAuthState(numberOf(state)));
  tryFinally(
      [&] {
        switch (state) {
        case AuthState::unauthorized:
          refuse(zorbel, message);
          break;
        case AuthState::authorized:
          zorbel->authStateApplied_message(Applied::yes, message);
          delegate._replayPendingActions();
          break;
        case AuthState::retired:
          retire(zorbel, message);
          break;
        default:
          Zorbel::wrapperLogAtLevel_format(3, "Ignoring state change... (%d)"_ns, static_cast<int>(state));
          zorbel->authStateApplied_message(Applied::no, message);
        }
      },
      [&] { delegate.updateWrappedZorbelState(); });
}

void QVZorbelDelegateState::refuse(Zorbel zorbel, NSString message) {
  Zorbel::wrapperLogAtLevel_format(2, "App is not authorized. Message: '%@'"_ns, message);
  zorbel.authStateApplied_message(Applied::yes, message);
  if (sdkInUse()->isCheckInRequested()) {
    Zorbel::wrapperLogAtLevel_format(
        2, "App is not authorized but check-in is requested hence not aborting the process."_ns);
    return;
  }
  zorbel.displayMessage(message);
  Zorbel::wrapperLogAtLevel_format(2, "App is not authorized so shutting down."_ns);
  self<QVZorbelDelegate>()._applicationTerminate();
}

void QVZorbelDelegateState::retire(Zorbel zorbel, NSString message) {
  Zorbel::wrapperLogAtLevel_format(2, "App has been requested to retire... '%@'"_ns, message);
  // The host hears of its preferences being removed, and may raise; it ends all the same.
  tryFinally([&] { ZorbelUtil::instance().wipeApplication(); },
             [&] {
               zorbel.displayMessage(message);
               self<QVZorbelDelegate>()._applicationTerminate();
             });
}

void QVZorbelDelegateState::zorbel_configChangedTo(Zorbel sdk, NSDictionary config) {
  const Strong<Zorbel> zorbel = sdk;
  self<QVZorbelDelegate>().triggerLogsInterception();
  const Strong<NSMutableDictionary> filtered = SBZorbelConfigHelper::filteredConfigFromConfig(config);
  if (filtered->count() > 0) {
    giveChangedConfiguration(zorbel, filtered);
  }
}

void QVZorbelDelegateState::zorbel_managedPolicyChangedTo(Zorbel, ManagedPolicy) {
  self<QVZorbelDelegate>().updateWrappedZorbelState();
}

void QVZorbelDelegateState::zorbel_openInPolicyChangedTo_whitelist(Zorbel sdk, OpenInPolicy policy, NSObject) {
  Zorbel::wrapperLogAtLevel_format(3, "open-in policy changed to '%@'"_ns,
                                   SBUtil::stringForOpenInPolicy(numberOf(policy)));
  sdk.openInPolicyApplied_message(Applied::yes, nullptr);
}

void QVZorbelDelegateState::zorbel_pasteboardPolicyChangedTo(Zorbel sdk, PasteboardPolicy policy) {
  Zorbel::wrapperLogAtLevel_format(3, "pasteboard policy changed to '%@'"_ns,
                                   SBUtil::stringForPasteboardPolicy(numberOf(policy)));
  sdk.pasteboardPolicyApplied_message(Applied::yes, nullptr);
  watchPasteboard(policy);
}

void QVZorbelDelegateState::zorbel_printPolicyChangedTo(Zorbel sdk, PrintPolicy policy) {
  Zorbel::wrapperLogAtLevel_format(3, "print policy changed to '%@'"_ns,
                                   SBUtil::stringForPrintPolicy(numberOf(policy)));
  sdk.printPolicyApplied_message(Applied::yes, nullptr);
}

BOOL QVZorbelDelegateState::isPasscodeExtensionActive() const {
  return ZorbelUtil::instance().isPasscodeExtensionActive();
}

BOOL QVZorbelDelegateState::canAppDisplayPasscodeExtension() const {
  return ZorbelUtil::instance().canAppDisplayPasscodeExtension();
}

void QVZorbelDelegateState::authenticateUser() const { ZorbelUtil::instance().startPasscodeExtension(); }

} // namespace qvsb
