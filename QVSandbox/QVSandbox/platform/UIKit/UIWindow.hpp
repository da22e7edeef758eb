#pragma once

#include "UITextInputMode.hpp"

namespace qvsb {

class UIWindow : public NSObject {
  QVSB_HANDLE(UIWindow, NSObject)
  QVSB_METHOD(UITextInputMode, textInputMode, "textInputMode")
  /// Takes the keyboard away from whatever in it is being edited; with force, without asking.
  QVSB_METHOD(BOOL, endEditing, "endEditing:", BOOL)
};

} // namespace qvsb
