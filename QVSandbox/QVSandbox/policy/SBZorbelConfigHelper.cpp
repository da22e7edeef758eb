#include "SBZorbelConfigHelper.hpp"

#include "../platform/Foundation/NSNumber.hpp"
#include "../platform/Zorbel/Zorbel.hpp"
#include "../platform/objc/implement.hpp"

namespace qvsb {

namespace {

NSString enableLogCaptureKey() { return "QV_ZB_WR_ENABLE_LOG_CAPTURE"_ns; }
NSString allowKeyboardDictationKey() { return "QV_ZB_WR_ALLOW_KEYBOARD_DICTATION"_ns; }

/// An administrator may have put anything under the key; what has no truth value is no consent.
BOOL truthOf(NSObject value) {
  if (value.isKindOfClass(NSNumber::classObject())) {
    return NSNumber::from(value).boolValue();
  }
  if (value.isKindOfClass(NSString::classObject())) {
    return NSString::from(value).boolValue();
  }
  return NO;
}

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "SBZorbelConfigHelper";
  static constexpr const char* superclassName = "NSObject";

  static BOOL boolValueForKey(Class, SEL, NSString key) {
    const Zorbel sdk = Zorbel::sharedInstance();
    if (!sdk.isReady()) {
      return NO;
    }
    return truthOf(NSObject::from(sdk.config().objectForKeyedSubscript(key)));
  }

  static BOOL isLogCapturingEnabled(Class self, SEL) {
    return send<BOOL>(self, "boolValueForKey:"_sel, enableLogCaptureKey());
  }

  static BOOL isKeyboardDictationAllowed(Class self, SEL) {
    return send<BOOL>(self, "boolValueForKey:"_sel, allowKeyboardDictationKey());
  }

  static NSMutableDictionary filteredZorbelConfig(Class self, SEL) {
    const Zorbel sdk = Zorbel::sharedInstance();
    if (!sdk.isReady()) {
      return nullptr;
    }
    return send<NSMutableDictionary>(self, "filteredConfigFromConfig:"_sel, sdk.config());
  }

  static NSMutableDictionary filteredConfigFromConfig(Class, SEL, NSDictionary config) {
    Strong<NSMutableDictionary> filtered = config.mutableCopy();
    filtered->removeObjectForKey(enableLogCaptureKey());
    filtered->removeObjectForKey(allowKeyboardDictationKey());
    return filtered.autorelease();
  }

  static constexpr MethodEntry classMethods[] = {
      method<&Implementation::boolValueForKey>("boolValueForKey:"),
      method<&Implementation::isLogCapturingEnabled>("isLogCapturingEnabled"),
      method<&Implementation::isKeyboardDictationAllowed>("isKeyboardDictationAllowed"),
      method<&Implementation::filteredZorbelConfig>("filteredZorbelConfig"),
      method<&Implementation::filteredConfigFromConfig>("filteredConfigFromConfig:"),
  };
};

} // namespace

Class registerSBZorbelConfigHelper() { return registerClass<Implementation>(); }

} // namespace qvsb
