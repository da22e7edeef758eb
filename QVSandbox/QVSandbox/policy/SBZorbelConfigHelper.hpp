// The library's own keys inside the configuration that the SDK delivers, which the host app never sees.
#pragma once

#include "../platform/Foundation/NSDictionary.hpp"

namespace qvsb {

class SBZorbelConfigHelper : public NSObject {
  QVSB_HANDLE(SBZorbelConfigHelper, NSObject)

  /// What the SDK's configuration holds under the key, as a truth value. NO while the SDK is absent or not ready, for a
  /// key that is not there, and for a value that is neither a number nor a string. Never raises.
  QVSB_CLASS_METHOD(BOOL, boolValueForKey, "boolValueForKey:", NSString)
  QVSB_CLASS_METHOD(BOOL, isLogCapturingEnabled, "isLogCapturingEnabled")
  QVSB_CLASS_METHOD(BOOL, isKeyboardDictationAllowed, "isKeyboardDictationAllowed")

  /// The SDK's configuration as the host app may see it; nil while the SDK is absent or not ready.
  QVSB_CLASS_METHOD(NSMutableDictionary, filteredZorbelConfig, "filteredZorbelConfig")
  /// A copy without the library's two keys; nil of nil.
  QVSB_CLASS_METHOD(NSMutableDictionary, filteredConfigFromConfig, "filteredConfigFromConfig:", NSDictionary)
};

Class registerSBZorbelConfigHelper();

} // namespace qvsb
