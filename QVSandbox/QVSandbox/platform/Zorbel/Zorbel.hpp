// The management SDK.
#pragma once

#include "../Foundation/NSArray.hpp"
#include "../Foundation/NSDictionary.hpp"
#include "../Foundation/NSString.hpp"

namespace qvsb {

class Zorbel : public NSObject {
  QVSB_HANDLE(Zorbel, NSObject)
  QVSB_CLASS_METHOD(Object, initPrivateWithDelegate_version_swizzledMethods,
                    "initPrivateWithDelegate:version:swizzledMethods:", Object, NSString, NSArray)
  QVSB_CLASS_METHOD(Zorbel, sharedInstance, "sharedInstance")
  QVSB_METHOD(BOOL, isReady, "isReady")
  QVSB_METHOD(NSDictionary, config, "config")

  /// The SDK's logger, any thread. Levels: 0 errors and refusals, 1 failed exchanges of UIApplication, 2 notable
  /// events, 3 method traces and progress, 4 listings, 5 details.
  template <class... Tail> static void wrapperLogAtLevel_format(NSInteger level, NSString format, Tail... tail) {
    VariadicMessage<void(NSInteger, NSString)>::send(classObject(), "wrapperLogAtLevel:format:"_sel, level, format,
                                                     tail...);
  }
};

} // namespace qvsb
