// What vImage's functions on pixels of four bytes have in common.
#pragma once

#include <cstddef>
#include <cstdint>

#include <Accelerate/vImage_Types.h>

namespace qvdevice {

inline constexpr std::size_t kPixelBytes = 4;

/// Whether rows are long enough for their pixels and all of them lie in the address space.
bool hasValidRows(const vImage_Buffer& buffer);

/// Whether a pixel of one is, in part at least, one of the other. Two halves of one picture have rows between each
/// other's and no pixel in common. Both have valid rows.
bool overlap(const vImage_Buffer& a, const vImage_Buffer& b);

/// Among how many threads to share `rows` rows of `width` pixels, of which each thread should have `fewest` at least.
std::size_t partsFor(std::size_t rows, std::size_t width, std::size_t fewest);

/// Where part `part` of `parts` begins in `rows` rows; an even number, but for the end.
std::size_t firstRow(std::size_t part, std::size_t parts, std::size_t rows);

} // namespace qvdevice
