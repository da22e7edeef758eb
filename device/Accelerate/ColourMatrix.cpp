// Compiled once for each kind of processor; which one runs is found out when the device does.
#include "Accelerate/ColourMatrix.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Accelerate/ColourMatrix.cpp"
#include <hwy/foreach_target.h>
// After it.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace qvdevice {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

const hn::ScalableTag<std::int32_t> longs;
const hn::ScalableTag<std::int16_t> words;
const hn::ScalableTag<std::uint16_t> unsignedWords;
const hn::ScalableTag<std::uint8_t> bytes;
using Longs = hn::Vec<hn::ScalableTag<std::int32_t>>;
using Words = hn::Vec<hn::ScalableTag<std::int16_t>>;

/// A vector of pixels as two of words: a pixel's channels 0 and 2 side by side, and its channels 1 and 3.
struct Channels {
  Words even;
  Words odd;

  explicit HWY_INLINE Channels(const std::uint8_t* pixels) {
    const auto v = hn::BitCast(unsignedWords, hn::LoadU(bytes, pixels));
    even = hn::BitCast(words, hn::And(v, hn::Set(unsignedWords, 0xFF)));
    odd = hn::BitCast(words, hn::ShiftRight<8>(v));
  }
};

/// A matrix's column: one of the result's channels.
class Column {
public:
  Column(const ColourMatrix& matrix, std::size_t j)
      : even_(pair(matrix.entries[j], matrix.entries[8 + j])),
        odd_(pair(matrix.entries[4 + j], matrix.entries[12 + j])) {}

  /// The sum of each pixel.
  HWY_INLINE Longs operator()(const Channels& pixels) const {
    return hn::Add(products(pixels.even, even_), products(pixels.odd, odd_));
  }

private:
  static Words pair(std::int16_t low, std::int16_t high) {
    const std::uint32_t both = static_cast<std::uint16_t>(low) | std::uint32_t{static_cast<std::uint16_t>(high)} << 16;
    return hn::BitCast(words, hn::Set(longs, std::bit_cast<std::int32_t>(both)));
  }

  static HWY_INLINE Longs products(Words a, Words b) {
    Longs rest = hn::Zero(longs);
    const Longs sums = hn::ReorderWidenMulAccumulate(longs, a, b, hn::Zero(longs), rest);
    return hn::RearrangeToOddPlusEven(sums, rest);
  }

  Words even_;
  Words odd_;
};

HWY_INLINE Words withinByte(Words v) { return hn::Min(hn::Max(v, hn::Zero(words)), hn::Set(words, 0xFF)); }

/// The divisor is 256, alpha stays, nothing is added, and a quotient fits in a word.
struct Plain {
  Column columns[3];

  explicit Plain(const ColourMatrix& matrix) : columns{Column(matrix, 0), Column(matrix, 1), Column(matrix, 2)} {}

  HWY_INLINE void operator()(const std::uint8_t* src, std::uint8_t* dest) const {
    const Channels pixels(src);
    // Quotients come to lie in the half of the pixel where their channel is.
    const Words zero = hn::BitCast(words, hn::ShiftRight<8>(columns[0](pixels)));
    const Words one = hn::BitCast(words, hn::ShiftRight<8>(columns[1](pixels)));
    const Words two = hn::BitCast(words, hn::ShiftLeft<8>(columns[2](pixels)));
    const Words even = withinByte(hn::OddEven(two, zero));
    const Words odd = withinByte(hn::OddEven(pixels.odd, one));
    hn::StoreU(hn::BitCast(bytes, hn::Or(even, hn::ShiftLeft<8>(odd))), bytes, dest);
  }
};

/// The divisor is a power of two.
struct Shifted {
  Column columns[4];
  Longs bias[4];
  int shift;

  explicit Shifted(const ColourMatrix& matrix)
      : columns{Column(matrix, 0), Column(matrix, 1), Column(matrix, 2), Column(matrix, 3)},
        bias{hn::Set(longs, matrix.bias[0]), hn::Set(longs, matrix.bias[1]), hn::Set(longs, matrix.bias[2]),
             hn::Set(longs, matrix.bias[3])},
        shift(std::countr_zero(static_cast<std::uint32_t>(matrix.divisor))) {}

  HWY_INLINE Longs channel(const Channels& pixels, std::size_t j) const {
    const Longs quotient = hn::ShiftRightSame(hn::Add(columns[j](pixels), bias[j]), shift);
    return hn::Min(hn::Max(quotient, hn::Zero(longs)), hn::Set(longs, 0xFF));
  }

  HWY_INLINE void operator()(const std::uint8_t* src, std::uint8_t* dest) const {
    const Channels pixels(src);
    const Longs low = hn::Or(channel(pixels, 0), hn::ShiftLeft<8>(channel(pixels, 1)));
    const Longs high = hn::Or(channel(pixels, 2), hn::ShiftLeft<8>(channel(pixels, 3)));
    hn::StoreU(hn::BitCast(bytes, hn::Or(low, hn::ShiftLeft<16>(high))), bytes, dest);
  }
};

template <class Multiply>
void eachVector(const Multiply& multiply, const std::uint8_t* src, std::uint8_t* dest, std::size_t pixels) {
  const std::size_t step = hn::Lanes(bytes);
  const std::size_t size = pixels * 4;
  std::size_t at = 0;
  for (; at + step <= size; at += step) {
    multiply(src + at, dest + at);
  }
  if (at < size) {
    std::uint8_t rest[HWY_MAX_BYTES] = {};
    std::memcpy(rest, src + at, size - at);
    multiply(rest, rest);
    std::memcpy(dest + at, rest, size - at);
  }
}

bool isPlain(const ColourMatrix& matrix) {
  for (std::size_t j = 0; j < 4; ++j) {
    int most = 0;
    for (std::size_t i = 0; i < 4; ++i) {
      most += std::abs(int{matrix.entries[4 * i + j]});
    }
    // 255 of these are less than 2^23.
    if (most > 0x7FFF || matrix.bias[j] != 0) return false;
  }
  return matrix.divisor == 256 && matrix.entries[3] == 0 && matrix.entries[7] == 0 && matrix.entries[11] == 0 &&
         matrix.entries[15] == 256;
}

void multiplyVectors(const ColourMatrix& matrix, const std::uint8_t* src, std::uint8_t* dest, std::size_t pixels) {
  if (isPlain(matrix)) {
    eachVector(Plain(matrix), src, dest, pixels);
  } else {
    eachVector(Shifted(matrix), src, dest, pixels);
  }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace qvdevice
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace qvdevice {

namespace {

HWY_EXPORT(multiplyVectors);

/// Any divisor.
void multiplyOneByOne(const ColourMatrix& matrix, const std::uint8_t* src, std::uint8_t* dest, std::size_t pixels) {
  for (std::size_t at = 0; at < pixels * 4; at += 4) {
    std::uint8_t result[4];
    for (std::size_t j = 0; j < 4; ++j) {
      auto sum = static_cast<std::uint32_t>(matrix.bias[j]);
      for (std::size_t i = 0; i < 4; ++i) {
        sum += static_cast<std::uint32_t>(matrix.entries[4 * i + j] * int{src[at + i]});
      }
      const std::int64_t quotient = std::int64_t{std::bit_cast<std::int32_t>(sum)} / matrix.divisor;
      result[j] = static_cast<std::uint8_t>(std::clamp<std::int64_t>(quotient, 0, 255));
    }
    std::memcpy(dest + at, result, sizeof result);
  }
}

} // namespace

void multiplyPixels(const ColourMatrix& matrix, const std::uint8_t* src, std::uint8_t* dest, std::size_t pixels) {
  // A quotient that is rounded down and one without its fraction differ where both become 0.
  if (matrix.divisor > 0 && std::has_single_bit(static_cast<std::uint32_t>(matrix.divisor))) {
    HWY_DYNAMIC_DISPATCH(multiplyVectors)(matrix, src, dest, pixels);
  } else {
    multiplyOneByOne(matrix, src, dest, pixels);
  }
}

} // namespace qvdevice
#endif
