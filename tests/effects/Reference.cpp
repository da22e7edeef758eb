#include "Reference.h"

#include <algorithm>

namespace reference {

namespace {

/// The mean of `size` bytes in a line: from (x, y) half of them back and half of them on.
std::uint8_t mean(const Pixels& from, long x, long y, long stepX, long stepY, long size, std::size_t part) {
  long sum = 0;
  for (long offset = -(size / 2); offset <= size / 2; ++offset) {
    const long column = std::clamp(x + offset * stepX, 0L, from.width - 1);
    const long row = std::clamp(y + offset * stepY, 0L, from.height - 1);
    sum += from.bytes[static_cast<std::size_t>(row * from.width + column)][part];
  }
  return static_cast<std::uint8_t>((2 * sum + size) / (2 * size));
}

Pixels means(const Pixels& from, long stepX, long stepY, long size) {
  Pixels to = from;
  for (long y = 0; y < from.height; ++y) {
    for (long x = 0; x < from.width; ++x) {
      for (std::size_t part = 0; part < 4; ++part) {
        to.bytes[static_cast<std::size_t>(y * from.width + x)][part] = mean(from, x, y, stepX, stepY, size, part);
      }
    }
  }
  return to;
}

} // namespace

Pixels box(const Pixels& from, long size) { return means(means(from, 0, 1, size), 1, 0, size); }

Pixels multiplied(const Pixels& from, const std::array<int, 16>& matrix) {
  Pixels to = from;
  for (std::size_t index = 0; index < from.bytes.size(); ++index) {
    for (std::size_t j = 0; j < 4; ++j) {
      int sum = 0;
      for (std::size_t i = 0; i < 4; ++i) {
        sum += from.bytes[index][i] * matrix[4 * i + j];
      }
      to.bytes[index][j] = static_cast<std::uint8_t>(std::clamp(sum / 256, 0, 255));
    }
  }
  return to;
}

} // namespace reference
