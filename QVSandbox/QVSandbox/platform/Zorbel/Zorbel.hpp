// The management SDK.
#pragma once

#include "../Foundation/NSArray.hpp"
#include "../Foundation/NSDictionary.hpp"
#include "../Foundation/NSString.hpp"
#include "../UIKit/UIEvent.hpp"

namespace qvsb {

// The SDK's enumerations: what the administrator has laid down. Any other value counts as not allowed.

enum class OpenInPolicy : NSInteger { unauthorized = 0, authorized = 1, whitelist = 2 };
/// Secure copy: only through the SDK's own pasteboard.
enum class PasteboardPolicy : NSInteger { unauthorized = 0, authorized = 1, secureCopy = 2 };
enum class PrintPolicy : NSInteger { unauthorized = 0, authorized = 1 };

class Zorbel : public NSObject {
  QVSB_HANDLE(Zorbel, NSObject)
  QVSB_CLASS_METHOD(Object, initPrivateWithDelegate_version_swizzledMethods,
                    "initPrivateWithDelegate:version:swizzledMethods:", Object, NSString, NSArray)
  QVSB_CLASS_METHOD(Zorbel, sharedInstance, "sharedInstance")
  QVSB_METHOD(BOOL, isReady, "isReady")
  QVSB_METHOD(NSDictionary, config, "config")
  QVSB_METHOD(OpenInPolicy, openInPolicy, "openInPolicy")
  QVSB_METHOD(PasteboardPolicy, pasteboardPolicy, "pasteboardPolicy")
  QVSB_METHOD(PrintPolicy, printPolicy, "printPolicy")
  /// A collection of patterns, array or set; nil without a whitelist.
  QVSB_METHOD(NSObject, openInWhitelist, "openInWhitelist")
  QVSB_METHOD(NSDictionary, getAppInfo, "getAppInfo")

  void postPasscodeExtensionResult(NSDictionary result) const {
    send<void>(*this, "postPasscodeExtensionResult:"_sel, result);
  }
  /// Restarts the SDK's inactivity timer.
  void sendEvent(UIEvent event) const { send<void>(*this, "sendEvent:"_sel, event); }

  /// The SDK's logger, any thread. Levels: 0 errors and refusals, 1 failed exchanges of UIApplication, 2 notable
  /// events, 3 method traces and progress, 4 listings, 5 details.
  template <class... Tail> static void wrapperLogAtLevel_format(NSInteger level, NSString format, Tail... tail) {
    VariadicMessage<void(NSInteger, NSString)>::send(classObject(), "wrapperLogAtLevel:format:"_sel, level, format,
                                                     tail...);
  }
};

} // namespace qvsb
