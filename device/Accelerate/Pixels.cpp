#include "Accelerate/Pixels.h"

#include <algorithm>

#include "Accelerate/Workers.h"

namespace qvdevice {

namespace {

/// An image smaller than this is done before another thread is awake.
constexpr std::size_t kFewestPixels = 1 << 15;

std::uintptr_t start(const vImage_Buffer& buffer) { return reinterpret_cast<std::uintptr_t>(buffer.data); }

/// Without what follows the last row's pixels.
std::uintptr_t length(const vImage_Buffer& buffer) {
  return buffer.height == 0 ? 0 : (buffer.height - 1) * buffer.rowBytes + buffer.width * kPixelBytes;
}

} // namespace

bool hasValidRows(const vImage_Buffer& buffer) {
  if (buffer.rowBytes / kPixelBytes < buffer.width) return false;
  std::size_t bytes = 0;
  std::uintptr_t end = 0;
  return !__builtin_mul_overflow(buffer.height, buffer.rowBytes, &bytes) &&
         !__builtin_add_overflow(start(buffer), bytes, &end);
}

bool overlap(const vImage_Buffer& a, const vImage_Buffer& b) {
  if (start(a) > start(b)) return overlap(b, a);
  const std::uintptr_t distance = start(b) - start(a);
  if (distance >= length(a) || length(b) == 0) return false;
  if (a.rowBytes != b.rowBytes) return true;
  const std::size_t column = distance % a.rowBytes;
  return column < a.width * kPixelBytes || column + b.width * kPixelBytes > a.rowBytes;
}

std::size_t partsFor(std::size_t rows, std::size_t width, std::size_t fewest) {
  const std::size_t least = std::max(fewest, kFewestPixels / std::max<std::size_t>(width, 1));
  return std::clamp<std::size_t>(rows / std::max<std::size_t>(least, 1), 1, workerCount());
}

std::size_t firstRow(std::size_t part, std::size_t parts, std::size_t rows) {
  if (part == parts) return rows;
  return rows / parts * part / 2 * 2;
}

} // namespace qvdevice
