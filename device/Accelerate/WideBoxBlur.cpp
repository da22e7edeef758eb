#include "Accelerate/BoxBlur.h"

#include <algorithm>
#include <cmath>

#include "Accelerate/Pixels.h"

namespace qvdevice {

namespace {

/// Sums are doubles, which hold them exactly: 255 times 2^32 at most. A mean is rounded exactly too: an odd box has
/// none that comes nearer to a half than 2^-33, far more than the product can be off.
std::uint8_t mean(double sum, double reciprocal) { return static_cast<std::uint8_t>(sum * reciprocal + 0.5); }

struct Columns {
  std::size_t first;
  std::size_t count;
};

/// Those columns of src that have a part in dest.
Columns columnsOf(const BoxBlur& blur) {
  const std::size_t radius = blur.boxWidth / 2;
  const std::size_t first = blur.x - std::min(blur.x, radius);
  const std::size_t end = std::min(blur.srcWidth, blur.x + blur.width + radius);
  return {.first = first, .count = end - first};
}

/// Tells `add` of each place in [0, size) that the places [first, end) come to when the outermost go on: `add(place,
/// how often)`.
template <class Add> void eachPlace(std::ptrdiff_t first, std::ptrdiff_t end, std::ptrdiff_t size, Add add) {
  const std::ptrdiff_t before = std::min(end, std::ptrdiff_t{0}) - std::min(first, std::ptrdiff_t{0});
  const std::ptrdiff_t after = std::max(end, size) - std::max(first, size);
  if (before > 0) add(0, static_cast<double>(before));
  for (std::ptrdiff_t place = std::max(first, std::ptrdiff_t{0}); place < std::min(end, size); ++place) {
    add(place, 1.0);
  }
  if (after > 0) add(size - 1, static_cast<double>(after));
}

/// The means of one row of column means.
void blurAlong(const BoxBlur& blur, const std::uint8_t* means, const Columns& columns, std::uint8_t* dest) {
  const auto radius = static_cast<std::ptrdiff_t>(blur.boxWidth / 2);
  const auto count = static_cast<std::ptrdiff_t>(columns.count);
  const auto offset = static_cast<std::ptrdiff_t>(blur.x - columns.first);
  const double reciprocal = 1.0 / blur.boxWidth;
  double sums[kPixelBytes] = {};
  eachPlace(offset - radius - 1, offset + radius, count, [&](std::ptrdiff_t place, double times) {
    for (std::size_t c = 0; c < kPixelBytes; ++c) {
      sums[c] += times * means[place * 4 + static_cast<std::ptrdiff_t>(c)];
    }
  });
  for (std::size_t x = 0; x < blur.width; ++x) {
    const std::ptrdiff_t at = offset + static_cast<std::ptrdiff_t>(x);
    const std::uint8_t* in = means + std::min(at + radius, count - 1) * 4;
    const std::uint8_t* out = means + std::max(at - radius - 1, std::ptrdiff_t{0}) * 4;
    for (std::size_t c = 0; c < kPixelBytes; ++c) {
      sums[c] += static_cast<double>(in[c]) - static_cast<double>(out[c]);
      dest[x * kPixelBytes + c] = mean(sums[c], reciprocal);
    }
  }
}

} // namespace

std::size_t wideScratch(const BoxBlur& blur) {
  const std::size_t bytes = columnsOf(blur).count * kPixelBytes * (sizeof(double) + 1);
  return (bytes + kScratchAlignment - 1) / kScratchAlignment * kScratchAlignment;
}

void blurRowsWide(const BoxBlur& blur, std::size_t first, std::size_t end, void* scratch) {
  const Columns columns = columnsOf(blur);
  const std::size_t values = columns.count * kPixelBytes;
  auto* const sums = static_cast<double*>(scratch);
  auto* const means = reinterpret_cast<std::uint8_t*>(sums + values);
  const auto radius = static_cast<std::ptrdiff_t>(blur.boxHeight / 2);
  const auto height = static_cast<std::ptrdiff_t>(blur.srcHeight);
  const double reciprocal = 1.0 / blur.boxHeight;
  const auto row = [&](std::ptrdiff_t y) {
    return blur.src + static_cast<std::size_t>(std::clamp(y, std::ptrdiff_t{0}, height - 1)) * blur.srcRowBytes +
           columns.first * kPixelBytes;
  };

  std::fill_n(sums, values, 0.0);
  const auto top = static_cast<std::ptrdiff_t>(blur.y + first);
  eachPlace(top - radius - 1, top + radius, height, [&](std::ptrdiff_t place, double times) {
    const std::uint8_t* const pixels = row(place);
    for (std::size_t i = 0; i < values; ++i) {
      sums[i] += times * pixels[i];
    }
  });
  for (std::size_t y = first; y < end; ++y) {
    const auto at = static_cast<std::ptrdiff_t>(blur.y + y);
    const std::uint8_t* const in = row(at + radius);
    const std::uint8_t* const out = row(at - radius - 1);
    for (std::size_t i = 0; i < values; ++i) {
      sums[i] += static_cast<double>(in[i]) - static_cast<double>(out[i]);
      means[i] = mean(sums[i], reciprocal);
    }
    blurAlong(blur, means, columns, blur.dest + y * blur.destRowBytes);
  }
}

} // namespace qvdevice
