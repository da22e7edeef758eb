#pragma once

#include "../CoreGraphics/CGColor.hpp"
#include "../Foundation/NSObject.hpp"

namespace qvsb {

class UIColor : public NSObject {
  QVSB_HANDLE(UIColor, NSObject)
  QVSB_CLASS_METHOD(UIColor, colorWithWhite_alpha, "colorWithWhite:alpha:", CGFloat, CGFloat)
  QVSB_CLASS_METHOD(UIColor, colorWithRed_green_blue_alpha, "colorWithRed:green:blue:alpha:", CGFloat, CGFloat, CGFloat,
                    CGFloat)
  /// NO, and nothing written, when the colour does not consist of these.
  QVSB_METHOD(BOOL, getWhite_alpha, "getWhite:alpha:", CGFloat*, CGFloat*)
  QVSB_METHOD(BOOL, getRed_green_blue_alpha, "getRed:green:blue:alpha:", CGFloat*, CGFloat*, CGFloat*, CGFloat*)
  QVSB_METHOD(CGColorRef, CGColor, "CGColor")
};

} // namespace qvsb
