#pragma once

#include "../platform/Foundation/NSArray.hpp"
#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/UIKit/UIEvent.hpp"
#include "../platform/Zorbel/Zorbel.hpp"

namespace qvsb {

/// The one place that turns the SDK's policies into decisions. They are read anew for every question, and without an
/// SDK, or with one that is not ready, every answer is NO.
class ZorbelUtil : public NSObject {
  QVSB_HANDLE(ZorbelUtil, NSObject)
  QVSB_CLASS_METHOD(ZorbelUtil, instance, "instance")

  QVSB_METHOD(Zorbel, zorbel, "zorbel")
  QVSB_METHOD(void, setZorbel, "setZorbel:", Zorbel)
  QVSB_METHOD(BOOL, registeredForPasteboardChangeNotification, "registeredForPasteboardChangeNotification")
  QVSB_METHOD(void, setRegisteredForPasteboardChangeNotification, "setRegisteredForPasteboardChangeNotification:", BOOL)

  QVSB_METHOD(BOOL, allowsPasteboard, "allowsPasteboard")
  QVSB_METHOD(BOOL, allowsPrinting, "allowsPrinting")
  QVSB_METHOD(BOOL, allowsOpenInWithAppId, "allowsOpenInWithAppId:", NSString)
  /// The given activity types and those that the policies forbid, each once, in no particular order.
  QVSB_METHOD(NSArray, mergeExcludedActivityTypes, "mergeExcludedActivityTypes:", NSArray)

  QVSB_METHOD(void, resetInactivity, "resetInactivity:", UIEvent)
  QVSB_METHOD(void, wipeApplication, "wipeApplication")

  QVSB_METHOD(void, takeSnapshot, "takeSnapshot")
  QVSB_METHOD(void, restoreSnapshot, "restoreSnapshot")

  QVSB_METHOD(BOOL, isPasscodeExtensionActive, "isPasscodeExtensionActive")
  QVSB_METHOD(BOOL, canAppDisplayPasscodeExtension, "canAppDisplayPasscodeExtension")
  QVSB_METHOD(void, startPasscodeExtension, "startPasscodeExtension")
  QVSB_METHOD(void, stopPasscodeExtension, "stopPasscodeExtension")
  QVSB_METHOD(NSDictionary, getAppInfo, "getAppInfo")
  QVSB_METHOD(void, postPasscodeExtensionResult, "postPasscodeExtensionResult:", NSDictionary)
};

/// Makes the class known to the runtime; once, at load.
Class registerZorbelUtil();

} // namespace qvsb
