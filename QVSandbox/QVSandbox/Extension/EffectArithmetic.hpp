// The numbers behind the image effects.
#pragma once

#include <array>
#include <cstdint>

#include "../platform/objc/target.hpp"

namespace qvsb {

/// Whether a blur radius in points, or a saturation factor, changes an image at all.
bool isBlur(CGFloat radius);
bool isSaturationChange(CGFloat factor);

/// The sides of the box whose mean, taken three times over, comes close to a Gaussian blur of the radius. The radius is
/// in pixels; one below 2 counts as 2. Odd, and the largest that there is for a radius that has no box.
std::uint32_t boxSize(CGFloat pixelRadius);

inline constexpr std::int32_t kSaturationDivisor = 256;

/// What a pixel's blue, green, red and alpha give to each of these, row by row, in 256ths. Entries that do not fit are
/// the nearest that do.
std::array<std::int16_t, 16> saturationMatrix(CGFloat factor);

} // namespace qvsb
