#pragma once

#include "../Foundation/NSString.hpp"

extern "C" {
extern objc_object*
    qvsbTextInputCurrentInputModeDidChangeNotification QVSB_SYMBOL(UITextInputCurrentInputModeDidChangeNotification);
}

namespace qvsb {

/// What the user writes with: a keyboard of some language, or the voice.
class UITextInputMode : public NSObject {
  QVSB_HANDLE(UITextInputMode, NSObject)
  QVSB_METHOD(Object, valueForKey, "valueForKey:", NSString)
};

inline NSString UITextInputCurrentInputModeDidChangeNotification() {
  return NSString(qvsbTextInputCurrentInputModeDidChangeNotification);
}

} // namespace qvsb
