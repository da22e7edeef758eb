// The management SDK.
#pragma once

#include "../Foundation/NSArray.hpp"
#include "../Foundation/NSDictionary.hpp"
#include "../Foundation/NSString.hpp"
#include "../UIKit/UIEvent.hpp"
#include "../UIKit/UIPasteboard.hpp"

namespace qvsb {

// The SDK's enumerations: what the administrator has laid down. Any other value counts as not allowed.

enum class AuthState : NSInteger { unauthorized = 0, authorized = 1, retired = 2 };
/// Only "managed" has a meaning.
enum class ManagedPolicy : NSInteger { managed = 2 };
enum class OpenInPolicy : NSInteger { unauthorized = 0, authorized = 1, whitelist = 2 };
/// Secure copy: only through the SDK's own pasteboard.
enum class PasteboardPolicy : NSInteger { unauthorized = 0, authorized = 1, secureCopy = 2 };
enum class PrintPolicy : NSInteger { unauthorized = 0, authorized = 1 };

/// What became of a change that the SDK told of.
enum class Applied : NSInteger { no = 0, yes = 1, error = 2 };

class Zorbel : public NSObject {
  QVSB_HANDLE(Zorbel, NSObject)
  QVSB_CLASS_METHOD(Object, initPrivateWithDelegate_version_swizzledMethods,
                    "initPrivateWithDelegate:version:swizzledMethods:", Object, NSString, NSArray)
  QVSB_CLASS_METHOD(Zorbel, sharedInstance, "sharedInstance")
  /// Whether a URL, given as NSURL or NSString, belongs to the SDK.
  QVSB_CLASS_METHOD(BOOL, isAppScheme, "isAppScheme:", Object)
  /// Prefixes of the pasteboard types by which the SDK marks its own items.
  QVSB_CLASS_METHOD(NSArray, zbPasteboardTypePrefixes, "zbPasteboardTypePrefixes")
  /// While suspended, lines do not go to the SDK's log file.
  QVSB_CLASS_METHOD(void, setLoggingToFileSuspended, "setLoggingToFileSuspended:", BOOL)

  /// Whom the SDK tells of changes, on the main thread. Not retained.
  QVSB_METHOD(void, setZorbelDelegate, "setZorbelDelegate:", Object)
  QVSB_METHOD(void, startWithLaunchOptions, "startWithLaunchOptions:", NSDictionary)

  QVSB_METHOD(BOOL, isReady, "isReady")
  QVSB_METHOD(BOOL, isReadyToTerminate, "isReadyToTerminate")
  QVSB_METHOD(BOOL, isCheckInRequested, "isCheckInRequested")
  QVSB_METHOD(AuthState, authState, "authState")
  QVSB_METHOD(NSDictionary, config, "config")
  QVSB_METHOD(ManagedPolicy, managedPolicy, "managedPolicy")
  QVSB_METHOD(OpenInPolicy, openInPolicy, "openInPolicy")
  QVSB_METHOD(PasteboardPolicy, pasteboardPolicy, "pasteboardPolicy")
  QVSB_METHOD(PrintPolicy, printPolicy, "printPolicy")
  /// A collection of patterns, array or set; nil without a whitelist.
  QVSB_METHOD(NSObject, openInWhitelist, "openInWhitelist")
  QVSB_METHOD(NSDictionary, getAppInfo, "getAppInfo")

  // Acknowledgements; the message may be nil.
  QVSB_METHOD(void, authStateApplied_message, "authStateApplied:message:", Applied, NSString)
  QVSB_METHOD(void, configApplied_message, "configApplied:message:", Applied, NSString)
  QVSB_METHOD(void, openInPolicyApplied_message, "openInPolicyApplied:message:", Applied, NSString)
  QVSB_METHOD(void, pasteboardPolicyApplied_message, "pasteboardPolicyApplied:message:", Applied, NSString)
  QVSB_METHOD(void, printPolicyApplied_message, "printPolicyApplied:message:", Applied, NSString)

  /// Shows the user a message.
  QVSB_METHOD(void, displayMessage, "displayMessage:", NSString)
  /// The process is about to end.
  QVSB_METHOD(void, willExit, "willExit")
  /// Restarts the SDK's inactivity timer.
  QVSB_METHOD(void, sendEvent, "sendEvent:", UIEvent)
  QVSB_METHOD(void, postPasscodeExtensionResult, "postPasscodeExtensionResult:", NSDictionary)
  /// Stands for the pasteboard; nil for nil.
  QVSB_METHOD(UIPasteboard, proxyForPasteboard, "proxyForPasteboard:", UIPasteboard)

  /// The SDK's logger, any thread. Levels: 0 errors and refusals, 1 failed exchanges of UIApplication, 2 notable
  /// events, 3 method traces and progress, 4 listings, 5 details.
  template <class... Tail> static void wrapperLogAtLevel_format(NSInteger level, NSString format, Tail... tail) {
    VariadicMessage<void(NSInteger, NSString)>::send(classObject(), "wrapperLogAtLevel:format:"_sel, level, format,
                                                     tail...);
  }
};

} // namespace qvsb
