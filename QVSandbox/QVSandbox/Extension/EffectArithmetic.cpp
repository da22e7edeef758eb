#include "EffectArithmetic.hpp"

#include <algorithm>
#include <limits>

namespace qvsb {

namespace {

constexpr CGFloat kEpsilon = std::numeric_limits<float>::epsilon();

/// What the formula gives for a radius of 2 pixels.
constexpr CGFloat kSmallestBox = 2.1299712059732503;
constexpr CGFloat kSquareRootOfTwoPi = 2.5066282746310002;

/// To the nearest integer, halves away from zero, in single precision.
std::int16_t rounded(CGFloat value) {
  constexpr float kMost = std::numeric_limits<std::int16_t>::max();
  constexpr float kLeast = std::numeric_limits<std::int16_t>::min();
  // An infinite value is in range after this; no number is none, and none comes here.
  return static_cast<std::int16_t>(std::clamp(__builtin_roundf(static_cast<float>(value)), kLeast, kMost));
}

} // namespace

bool isBlur(CGFloat radius) { return radius > kEpsilon; }

bool isSaturationChange(CGFloat factor) { return __builtin_fabs(factor - 1.0) > kEpsilon; }

std::uint32_t boxSize(CGFloat pixelRadius) {
  // No number counts as small, too.
  const bool large = pixelRadius - 2.0 >= kEpsilon;
  const CGFloat size = large ? (pixelRadius * 3 * kSquareRootOfTwoPi / 4 + 0.5) / 2 : kSmallestBox;
  constexpr std::uint32_t kLargest = std::numeric_limits<std::uint32_t>::max();
  return size < kLargest ? static_cast<std::uint32_t>(size) | 1U : kLargest;
}

std::array<std::int16_t, 16> saturationMatrix(CGFloat factor) {
  const CGFloat s = factor;
  // clang-format off: a matrix
  const CGFloat entries[16] = {
      0.0722 + 0.9278 * s, 0.0722 - 0.0722 * s, 0.0722 - 0.0722 * s, 0,
      0.7152 - 0.7152 * s, 0.7152 + 0.2848 * s, 0.7152 - 0.7152 * s, 0,
      0.2126 - 0.2126 * s, 0.2126 - 0.2126 * s, 0.2126 + 0.7873 * s, 0, // not 0.7874: what others have seen so far
      0,                   0,                   0,                   1,
  };
  // clang-format on
  std::array<std::int16_t, 16> matrix{};
  std::transform(entries, entries + 16, matrix.begin(),
                 [](CGFloat entry) { return rounded(entry * kSaturationDivisor); });
  return matrix;
}

} // namespace qvsb
