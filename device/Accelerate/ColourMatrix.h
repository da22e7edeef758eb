// Each pixel's four bytes times a matrix.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qvdevice {

struct ColourMatrix {
  /// What channel i gives to channel j stands at 4 * i + j.
  std::int16_t entries[16];
  /// What is added to each channel's sum, which has 32 bits and wraps around.
  std::int32_t bias[4];
  /// Not 0.
  std::int32_t divisor;
};

/// `dest` is `src` or does not overlap it.
void multiplyPixels(const ColourMatrix& matrix, const std::uint8_t* src, std::uint8_t* dest, std::size_t pixels);

} // namespace qvdevice
