// vImage's box blur and matrix on pictures, regions and numbers of any kind, against sums that are made anew for each
// pixel. Every buffer ends where its last pixel does, so that AddressSanitizer sees a step too far.
#include "Fuzzer.h"

#include <Accelerate/Convolution.h>
#include <Accelerate/Transform.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

struct Picture {
  std::size_t width;
  std::size_t height;
  std::size_t rowBytes;
  std::unique_ptr<std::uint8_t[]> bytes;

  Picture(std::size_t w, std::size_t h, std::size_t padding)
      : width(w), height(h), rowBytes(w * 4 + padding),
        bytes(new std::uint8_t[h == 0 ? 0 : (h - 1) * rowBytes + w * 4]()) {}

  vImage_Buffer buffer() const { return {bytes.get(), height, width, rowBytes}; }
  std::uint8_t *at(std::size_t x, std::size_t y) const { return bytes.get() + y * rowBytes + x * 4; }
};

Picture picture(FuzzedDataProvider &data, std::size_t width, std::size_t height) {
  Picture made(width, height, data.ConsumeIntegralInRange<std::size_t>(0, 9));
  std::uint32_t noise = data.ConsumeIntegral<std::uint32_t>();
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t i = 0; i < width * 4; ++i) {
      noise = noise * 1664525 + 1013904223;
      made.at(0, y)[i] = static_cast<std::uint8_t>(noise >> 24);
    }
  }
  return made;
}

std::size_t within(std::int64_t place, std::size_t size) {
  return static_cast<std::size_t>(std::clamp<std::int64_t>(place, 0, static_cast<std::int64_t>(size) - 1));
}

/// The mean around `at`, rounded to the nearest.
template <class Value> std::uint8_t mean(std::size_t at, std::uint32_t box, std::size_t size, Value value) {
  const std::int64_t radius = box / 2;
  const auto middle = static_cast<std::int64_t>(at);
  std::int64_t sum = radius;
  for (std::int64_t place = middle - radius; place <= middle + radius; ++place) {
    sum += value(within(place, size));
  }
  return static_cast<std::uint8_t>(sum / box);
}

void blur(FuzzedDataProvider &data) {
  const auto size = [&] { return data.ConsumeIntegralInRange<std::size_t>(1, 40); };
  const Picture source = picture(data, size(), size());
  const Picture dest(data.ConsumeIntegralInRange<std::size_t>(0, source.width + 1),
                     data.ConsumeIntegralInRange<std::size_t>(0, source.height + 1),
                     data.ConsumeIntegralInRange<std::size_t>(0, 9));
  const auto x0 = data.ConsumeIntegralInRange<std::size_t>(0, source.width);
  const auto y0 = data.ConsumeIntegralInRange<std::size_t>(0, source.height);
  const auto box = [&] { return data.ConsumeIntegralInRange<std::uint32_t>(0, 300); };
  const std::uint32_t boxWidth = box();
  const std::uint32_t boxHeight = box();
  const vImage_Flags flags =
      data.ConsumeBool() ? vImage_Flags{kvImageEdgeExtend} : data.ConsumeIntegral<vImage_Flags>();

  const vImage_Buffer from = source.buffer();
  const vImage_Buffer to = dest.buffer();
  const bool allowed = boxWidth % 2 == 1 && boxHeight % 2 == 1 && dest.width + x0 <= source.width &&
                       dest.height + y0 <= source.height && (flags & ~std::uint32_t{16 | 128}) == kvImageEdgeExtend;
  const vImage_Error result =
      vImageBoxConvolve_ARGB8888(&from, &to, nullptr, x0, y0, boxHeight, boxWidth, nullptr, flags);
  if (allowed ? result < 0 : result >= 0) fail([NSString stringWithFormat:@"answered %ld", static_cast<long>(result)]);
  if (!allowed || (flags & kvImageGetTempBufferSize) != 0) return;

  for (std::size_t y = 0; y < dest.height; ++y) {
    std::vector<std::uint8_t> columns(source.width * 4);
    for (std::size_t i = 0; i < columns.size(); ++i) {
      columns[i] = mean(y0 + y, boxHeight, source.height, [&](std::size_t at) { return source.at(0, at)[i]; });
    }
    for (std::size_t i = 0; i < dest.width * 4; ++i) {
      const std::uint8_t expected =
          mean(x0 + i / 4, boxWidth, source.width, [&](std::size_t at) { return columns[at * 4 + i % 4]; });
      if (dest.at(0, y)[i] != expected) fail(@"another blur");
    }
  }
}

void multiply(FuzzedDataProvider &data) {
  const Picture source =
      picture(data, data.ConsumeIntegralInRange<std::size_t>(0, 70), data.ConsumeIntegralInRange<std::size_t>(1, 5));
  const Picture dest(source.width, source.height, data.ConsumeIntegralInRange<std::size_t>(0, 9));
  std::int16_t matrix[16];
  for (std::int16_t &entry : matrix) {
    entry = data.ConsumeBool() ? data.ConsumeIntegral<std::int16_t>()
                               : data.ConsumeIntegralInRange<std::int16_t>(-600, 600);
  }
  if (data.ConsumeBool()) matrix[3] = matrix[7] = matrix[11] = 0, matrix[15] = 256;
  const bool biased = data.ConsumeBool();
  std::int16_t before[4] = {};
  std::int32_t after[4] = {};
  for (std::size_t c = 0; c < 4 && biased; ++c) {
    before[c] = data.ConsumeIntegral<std::int16_t>();
    after[c] = data.ConsumeIntegral<std::int32_t>();
  }
  const auto divisor = data.ConsumeBool() ? 256 : data.ConsumeIntegral<std::int32_t>();
  const auto flags = data.ConsumeBool() ? vImage_Flags{0} : data.ConsumeIntegral<vImage_Flags>();

  const vImage_Buffer from = source.buffer();
  const vImage_Buffer to = dest.buffer();
  const vImage_Error result = vImageMatrixMultiply_ARGB8888(&from, &to, matrix, divisor, biased ? before : nullptr,
                                                            biased ? after : nullptr, flags);
  if (divisor == 0 || (flags & ~vImage_Flags{kvImageDoNotTile}) != 0) {
    if (result >= 0) fail(@"not refused");
    return;
  }
  if (result != kvImageNoError) fail(@"refused");
  for (std::size_t y = 0; y < dest.height; ++y) {
    for (std::size_t i = 0; i < dest.width * 4; ++i) {
      std::int64_t sum = after[i % 4];
      for (std::size_t k = 0; k < 4; ++k) {
        sum += std::int64_t{matrix[4 * k + i % 4]} * (source.at(i / 4, y)[k] + before[k]);
      }
      // 32 bits, as documented.
      const std::int64_t quotient = std::int64_t{static_cast<std::int32_t>(static_cast<std::uint32_t>(sum))} / divisor;
      if (dest.at(0, y)[i] != std::clamp<std::int64_t>(quotient, 0, 255)) fail(@"another product");
    }
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size) {
  FuzzedDataProvider data(bytes, size);
  if (data.ConsumeBool())
    blur(data);
  else
    multiply(data);
  return 0;
}
