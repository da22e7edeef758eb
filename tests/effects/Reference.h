// The effects' arithmetic once more, as slowly and plainly as it can be said.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace reference {

/// Four bytes a pixel, row by row.
struct Pixels {
  long width;
  long height;
  std::vector<std::array<std::uint8_t, 4>> bytes;

  bool operator==(const Pixels&) const = default;
};

/// Each byte the mean of the box around it: down the columns first, to the nearest, then along the rows. Beyond the
/// edges the outermost pixels go on.
Pixels box(const Pixels& from, long size);

/// Row i of the matrix is what byte i gives to each; the sum's 256th part without its fraction, within 0 to 255.
Pixels multiplied(const Pixels& from, const std::array<int, 16>& matrix);

} // namespace reference
