#include <Accelerate/Transform.h>

#include <bit>
#include <cstring>

#include "Accelerate/ColourMatrix.h"
#include "Accelerate/Pixels.h"
#include "Accelerate/Workers.h"

namespace {

using namespace qvdevice;

vImage_Error errorIn(const vImage_Buffer& src, const vImage_Buffer& dest, int32_t divisor, vImage_Flags flags) {
  if (src.data == nullptr || dest.data == nullptr) return kvImageNullPointerArgument;
  if ((flags & ~vImage_Flags{kvImageDoNotTile}) != 0) return kvImageUnknownFlagsBit;
  if (divisor == 0) return kvImageInvalidParameter;
  if (src.width != dest.width || src.height != dest.height) return kvImageBufferSizeMismatch;
  if (!hasValidRows(src) || !hasValidRows(dest)) return kvImageInvalidRowBytes;
  const bool inPlace = src.data == dest.data && src.rowBytes == dest.rowBytes;
  if (!inPlace && overlap(src, dest)) return kvImageOutOfPlaceOperationRequired;
  return kvImageNoError;
}

ColourMatrix matrixOf(const int16_t* entries, int32_t divisor, const int16_t* before, const int32_t* after) {
  ColourMatrix matrix = {.entries = {}, .bias = {}, .divisor = divisor};
  std::memcpy(matrix.entries, entries, sizeof matrix.entries);
  for (std::size_t j = 0; j < 4; ++j) {
    // What is added to the source is added to the sum as often as its entry says.
    auto bias = static_cast<std::uint32_t>(after != nullptr ? after[j] : 0);
    for (std::size_t i = 0; i < 4 && before != nullptr; ++i) {
      bias += static_cast<std::uint32_t>(int{entries[4 * i + j]} * int{before[i]});
    }
    matrix.bias[j] = std::bit_cast<std::int32_t>(bias);
  }
  return matrix;
}

void multiplyRows(const ColourMatrix& matrix, const vImage_Buffer& src, const vImage_Buffer& dest, std::size_t first,
                  std::size_t end) {
  const auto* from = static_cast<const std::uint8_t*>(src.data) + first * src.rowBytes;
  auto* to = static_cast<std::uint8_t*>(dest.data) + first * dest.rowBytes;
  const std::size_t whole = src.width * kPixelBytes;
  if (src.rowBytes == whole && dest.rowBytes == whole) {
    multiplyPixels(matrix, from, to, (end - first) * src.width);
    return;
  }
  for (std::size_t row = first; row < end; ++row, from += src.rowBytes, to += dest.rowBytes) {
    multiplyPixels(matrix, from, to, src.width);
  }
}

} // namespace

vImage_Error vImageMatrixMultiply_ARGB8888(const vImage_Buffer* src, const vImage_Buffer* dest,
                                           const int16_t matrix[4 * 4], int32_t divisor, const int16_t* pre_bias_p,
                                           const int32_t* post_bias_p, vImage_Flags flags) {
  if (src == nullptr || dest == nullptr || matrix == nullptr) return kvImageNullPointerArgument;
  if (const vImage_Error error = errorIn(*src, *dest, divisor, flags); error != kvImageNoError) return error;

  const struct {
    ColourMatrix matrix;
    const vImage_Buffer& src;
    const vImage_Buffer& dest;
    std::size_t parts;
  } work = {.matrix = matrixOf(matrix, divisor, pre_bias_p, post_bias_p),
            .src = *src,
            .dest = *dest,
            .parts = (flags & kvImageDoNotTile) != 0 ? 1 : partsFor(src->height, src->width, 1)};
  shareAmongWorkers(work.parts, [&work](std::size_t part) {
    multiplyRows(work.matrix, work.src, work.dest, firstRow(part, work.parts, work.src.height),
                 firstRow(part + 1, work.parts, work.src.height));
  });
  return kvImageNoError;
}
