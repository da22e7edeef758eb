#pragma once

#include "UIView.hpp"

namespace qvsb {

enum class UIBlurEffectStyle : NSInteger { extraLight = 0, light = 1, dark = 2 };

class UIVisualEffect : public NSObject {
  QVSB_HANDLE(UIVisualEffect, NSObject)
};

class UIBlurEffect : public UIVisualEffect {
  QVSB_HANDLE(UIBlurEffect, UIVisualEffect)
  QVSB_CLASS_METHOD(UIBlurEffect, effectWithStyle, "effectWithStyle:", UIBlurEffectStyle)
};

/// Shows what lies behind it through an effect.
class UIVisualEffectView : public UIView {
  QVSB_HANDLE(UIVisualEffectView, UIView)
  QVSB_CLASS_METHOD(UIVisualEffectView, alloc, "alloc")
  QVSB_METHOD(UIVisualEffectView, initWithEffect, "initWithEffect:", UIVisualEffect)
};

} // namespace qvsb
