// The mean of up to 255 bytes from their sum, in 16 bits.
#pragma once

#include <cstdint>

namespace qvdevice {

/// The mean, rounded to the nearest value, of a sum that `bias` was added to: the upper halves of two products of 16
/// bits, `high(high(sum * multiplier) * scale)`.
struct NarrowMean {
  std::uint16_t multiplier;
  std::uint16_t scale;
  std::uint16_t bias;
};

constexpr bool hasNarrowMean(std::uint32_t count) { return count >= 3 && count <= 255 && count % 2 == 1; }

constexpr std::uint32_t meanBy(const NarrowMean& by, std::uint32_t sum) {
  return (((sum + by.bias) * std::uint64_t{by.multiplier} >> 16) * by.scale) >> 16;
}

/// Whether every sum has the right mean. The means of growing sums grow, so the two ends of each mean's sums tell.
constexpr bool isExact(const NarrowMean& by, std::uint32_t count) {
  const std::uint32_t half = count / 2;
  if (255 * count + by.bias > 0xFFFF) return false;
  for (std::uint32_t mean = 0; mean <= 255; ++mean) {
    if (meanBy(by, mean == 0 ? 0 : mean * count - half) != mean) return false;
    if (meanBy(by, mean == 255 ? 255 * count : mean * count + half) != mean) return false;
  }
  return true;
}

/// For every count that hasNarrowMean(). The reciprocal has 16 significant bits, rounded up; where this gives too much
/// for a large sum, it is rounded down, and the bias one greater.
constexpr NarrowMean narrowMean(std::uint32_t count) {
  std::uint32_t bits = 1;
  while (count >> (bits + 1) != 0) {
    ++bits;
  }
  const std::uint32_t power = std::uint32_t{1} << (16 + bits);
  const NarrowMean up = {.multiplier = static_cast<std::uint16_t>((power + count - 1) / count),
                         .scale = static_cast<std::uint16_t>(1 << (16 - bits)),
                         .bias = static_cast<std::uint16_t>(count / 2)};
  if (isExact(up, count)) return up;
  return {.multiplier = static_cast<std::uint16_t>(power / count),
          .scale = up.scale,
          .bias = static_cast<std::uint16_t>(up.bias + 1)};
}

} // namespace qvdevice
