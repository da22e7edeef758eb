#pragma once

#import <UIKit/UIColor.h>

#include "Screen/Palette.h"

namespace qvdevice {

/// A pattern counts as black.
inline Color colorOf(UIColor *color) {
  CGFloat red = 0, green = 0, blue = 0, alpha = 1;
  [color getRed:&red green:&green blue:&blue alpha:&alpha];
  return {red, green, blue, alpha};
}

} // namespace qvdevice
