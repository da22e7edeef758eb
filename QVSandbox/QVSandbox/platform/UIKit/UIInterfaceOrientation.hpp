#pragma once

#include "../objc/target.hpp"

namespace qvsb {

enum class UIInterfaceOrientation : NSInteger { unknown = 0, portrait = 1 };

/// A bit for each orientation, at the place of its number.
using UIInterfaceOrientationMask = NSUInteger;
inline constexpr UIInterfaceOrientationMask UIInterfaceOrientationMaskPortrait = 2;
inline constexpr UIInterfaceOrientationMask UIInterfaceOrientationMaskAll = 30;

} // namespace qvsb
