// With vectors: sums have 16 bits, a mean is two multiplications. Compiled once for each kind of processor; which one
// runs is found out when the device does.
#include "Accelerate/BoxBlur.h"

#include <algorithm>
#include <cstring>

#include "Accelerate/NarrowMean.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Accelerate/NarrowBoxBlur.cpp"
#include <hwy/foreach_target.h>
// After it.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace qvdevice {
namespace HWY_NAMESPACE {
namespace {

namespace hn = hwy::HWY_NAMESPACE;

// A vector consists of blocks of 16 bytes. Down the columns it holds neighbouring pixels of one row. Along the rows
// each of its blocks holds two pixels of another row: so many rows are done at once, and no sum crosses a block.
#if HWY_HAVE_SCALABLE || HWY_MAX_BYTES < 32
constexpr std::size_t kRows = 1;
#else
constexpr std::size_t kRows = 2;
#endif
constexpr std::size_t kBlock = 8; // sums in a block
constexpr std::size_t kSums = kBlock * kRows;
constexpr std::size_t kLoad = 4 * kRows; // pixels of a row that are loaded at once

const hn::CappedTag<std::uint8_t, 2 * kSums> bytes;
const hn::CappedTag<std::uint16_t, kSums> words;
const hn::CappedTag<std::uint64_t, kSums / 4> pixels;
using Bytes = hn::Vec<hn::CappedTag<std::uint8_t, 2 * kSums>>;
using Words = hn::Vec<hn::CappedTag<std::uint16_t, kSums>>;

/// The first and the second half of each block, each byte as a word.
HWY_INLINE Words lower(Bytes v) { return hn::BitCast(words, hn::InterleaveLower(bytes, v, hn::Zero(bytes))); }
HWY_INLINE Words upper(Bytes v) { return hn::BitCast(words, hn::InterleaveUpper(bytes, v, hn::Zero(bytes))); }

class Means {
public:
  explicit Means(const NarrowMean& mean)
      : multiplier_(hn::Set(words, mean.multiplier)), scale_(hn::Set(words, mean.scale)) {}

  HWY_INLINE Words operator()(Words sums) const { return hn::MulHigh(hn::MulHigh(sums, multiplier_), scale_); }

private:
  Words multiplier_;
  Words scale_;
};

/// Two pixels of each row, a block a row, exchanged.
HWY_INLINE Words exchanged(Words v) { return hn::BitCast(words, hn::Shuffle01(hn::BitCast(pixels, v))); }

/// Pairs of pixels of one row go to every kRows-th block; the second half of the vector is two pairs further on.
HWY_INLINE void storePairs(Words v, std::uint16_t* to) {
#if HWY_HAVE_SCALABLE || HWY_MAX_BYTES < 32
  hn::Store(v, words, to);
#else
  const hn::Half<decltype(words)> half;
  hn::Store(hn::LowerHalf(half, v), half, to);
  hn::Store(hn::UpperHalf(half, v), half, to + 2 * kSums);
#endif
}

/// The rows that come into the box and those that leave it, from one row of dest to the next.
struct Rows {
  const std::uint8_t* in[kRows];
  const std::uint8_t* out[kRows];

  /// The last `count` pixels, and zeros up to kLoad, from memory that may be read as far as that.
  Rows end(std::size_t x, std::size_t count, std::uint8_t (&copy)[2 * kRows][kLoad * 4]) const {
    Rows ends;
    for (std::size_t row = 0; row < kRows; ++row) {
      std::memcpy(copy[2 * row], in[row] + x * 4, count * 4);
      std::memcpy(copy[2 * row + 1], out[row] + x * 4, count * 4);
      ends.in[row] = copy[2 * row];
      ends.out[row] = copy[2 * row + 1];
    }
    return ends;
  }
};

/// Column sums and means of kLoad pixels of kRows rows.
HWY_INLINE void downColumns(const Rows& rows, std::size_t at, std::uint16_t* sums, std::uint16_t* means,
                            const Means& mean) {
  Words low = hn::Load(words, sums);
  Words high = hn::Load(words, sums + kSums);
  for (std::size_t row = 0; row < kRows; ++row) {
    const Bytes in = hn::LoadU(bytes, rows.in[row] + at);
    const Bytes out = hn::LoadU(bytes, rows.out[row] + at);
    low = hn::Add(low, hn::Sub(lower(in), lower(out)));
    high = hn::Add(high, hn::Sub(upper(in), upper(out)));
    storePairs(mean(low), means + row * kBlock);
    storePairs(mean(high), means + kSums + row * kBlock);
  }
  hn::Store(low, words, sums);
  hn::Store(high, words, sums + kSums);
}

HWY_INLINE void addTo(std::uint16_t* sums, const std::uint8_t* at, Words times) {
  const Bytes v = hn::LoadU(bytes, at);
  hn::Store(hn::Add(hn::Load(words, sums), hn::Mul(lower(v), times)), words, sums);
  hn::Store(hn::Add(hn::Load(words, sums + kSums), hn::Mul(upper(v), times)), words, sums + kSums);
}

void addRow(const std::uint8_t* row, std::size_t width, std::size_t times, std::uint16_t* sums) {
  const Words each = hn::Set(words, static_cast<std::uint16_t>(times));
  std::size_t x = 0;
  for (; x + kLoad <= width; x += kLoad) {
    addTo(sums + x * 4, row + x * 4, each);
  }
  if (x < width) {
    std::uint8_t rest[kLoad * 4] = {};
    std::memcpy(rest, row + x * 4, (width - x) * 4);
    addTo(sums + x * 4, rest, each);
  }
}

/// Means of each row's column means. `means` has `halo` more vectors before the row and one more than that after it.
///
/// A vector has two pixels of each row, so the sums that are kept are those of whole vectors: the box without its last
/// pixel where the radius is even, the box and one pixel before it where it is odd.
template <bool kOddRadius>
void alongRows(const std::uint16_t* means, std::size_t width, std::size_t halo, const NarrowMean& by,
               std::uint8_t* const* dest) {
  HWY_ALIGN static constexpr std::uint8_t kOrder[32] = {0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15,
                                                        0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15};
  const Bytes order = hn::Load(bytes, kOrder);
  const Means mean(by);
  Words kept = hn::Zero(words);
  for (const std::uint16_t* at = means - halo * kSums; at != means + halo * kSums; at += kSums) {
    kept = hn::Add(kept, hn::Load(words, at));
  }
  kept = hn::Add(hn::Add(kept, exchanged(kept)), hn::Set(words, by.bias));

  const auto two = [&](std::size_t x) HWY_ATTR {
    const std::uint16_t* const at = means + x / 2 * kSums;
    const Words in = hn::Load(words, at + halo * kSums);
    const Words out = hn::Load(words, at - halo * kSums);
    const Words change = hn::Sub(in, out);
    const Words sums = hn::Add(kept, hn::ShiftLeftLanes<4>(words, change));
    kept = hn::Add(kept, hn::Add(change, exchanged(change)));
    return mean(kOddRadius ? hn::Sub(sums, out) : hn::Add(sums, in));
  };
  const auto four = [&](std::size_t x) HWY_ATTR {
    const Words first = two(x);
    const Words second = two(x + 2);
    return hn::TableLookupBytes(hn::BitCast(bytes, hn::Or(first, hn::ShiftLeft<8>(second))), order);
  };

  std::size_t x = 0;
  for (; x + 4 <= width; x += 4) {
    const Bytes v = four(x);
#if HWY_HAVE_SCALABLE || HWY_MAX_BYTES < 32
    hn::StoreU(v, bytes, dest[0] + x * 4);
#else
    const hn::Half<decltype(bytes)> half;
    hn::StoreU(hn::LowerHalf(half, v), half, dest[0] + x * 4);
    hn::StoreU(hn::UpperHalf(half, v), half, dest[1] + x * 4);
#endif
  }
  if (x < width) {
    HWY_ALIGN std::uint8_t rest[kRows][16];
    hn::Store(four(x), bytes, rest[0]);
    for (std::size_t row = 0; row < kRows; ++row) {
      std::memcpy(dest[row] + x * 4, rest[row], (width - x) * 4);
    }
  }
}

/// The outermost means of each row go on to both sides.
void extendEdges(std::uint16_t* means, std::size_t width, std::size_t halo) {
  std::uint16_t* const last = means + (width - 1) / 2 * kSums;
  const auto left = hn::BitCast(pixels, hn::Load(words, means));
  const auto right = hn::BitCast(pixels, hn::Load(words, last));
  const Words before = hn::BitCast(words, hn::InterleaveLower(pixels, left, left));
  const Words after = hn::BitCast(words, width % 2 != 0 ? hn::InterleaveLower(pixels, right, right)
                                                        : hn::InterleaveUpper(pixels, right, right));
  if (width % 2 != 0) hn::Store(after, words, last);
  for (std::size_t i = 1; i <= halo; ++i) {
    hn::Store(before, words, means - i * kSums);
  }
  for (std::size_t i = 1; i <= halo + 1; ++i) {
    hn::Store(after, words, last + i * kSums);
  }
}

std::size_t haloOf(const BoxBlur& blur) { return (blur.boxWidth / 2 + 1) / 2; }

std::size_t roundedUp(std::size_t value, std::size_t to) { return (value + to - 1) / to * to; }

/// The parts of the scratch memory, in words.
struct Scratch {
  std::size_t sums;
  std::size_t means;
  std::size_t spareRow; // where a row goes that is done without need

  explicit Scratch(const BoxBlur& blur)
      : sums(roundedUp(blur.width, kLoad) * 4), means(sums / kBlock * kSums + (2 * haloOf(blur) + 1) * kSums),
        spareRow(blur.width * 2) {}
};

std::size_t scratchSize(const BoxBlur& blur) {
  const Scratch parts(blur);
  return roundedUp((parts.sums + parts.means + parts.spareRow) * sizeof(std::uint16_t), kScratchAlignment);
}

/// The sums of the box around row `first` - 1.
void beginSums(const BoxBlur& blur, std::size_t first, const NarrowMean& mean, std::size_t count, std::uint16_t* sums) {
  const auto last = static_cast<std::ptrdiff_t>(blur.srcHeight) - 1;
  const auto radius = static_cast<std::ptrdiff_t>(blur.boxHeight / 2);
  const auto end = static_cast<std::ptrdiff_t>(first) + radius;
  std::fill_n(sums, count, mean.bias);
  for (std::ptrdiff_t y = end - 2 * radius - 1; y < end;) {
    std::ptrdiff_t times = 1;
    if (y < 0) times = std::min<std::ptrdiff_t>(1 - y, end - y);
    if (y >= last || last == 0) times = end - y;
    addRow(blur.src + static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(y, 0, last)) * blur.srcRowBytes, blur.width,
           static_cast<std::size_t>(times), sums);
    y += times;
  }
}

void blurRows(const BoxBlur& blur, std::size_t first, std::size_t end, void* memory) {
  const NarrowMean down = narrowMean(blur.boxHeight);
  const NarrowMean along = narrowMean(blur.boxWidth);
  const Means mean(down);
  const std::size_t halo = haloOf(blur);
  const Scratch parts(blur);
  auto* const sums = static_cast<std::uint16_t*>(memory);
  std::uint16_t* const means = sums + parts.sums + halo * kSums;
  auto* const spareRow = reinterpret_cast<std::uint8_t*>(sums + parts.sums + parts.means);
  const auto last = static_cast<std::ptrdiff_t>(blur.srcHeight) - 1;
  const auto radius = static_cast<std::ptrdiff_t>(blur.boxHeight / 2);
  const auto row = [&](std::ptrdiff_t y) {
    return blur.src + static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(y, 0, last)) * blur.srcRowBytes;
  };

  beginSums(blur, first, down, parts.sums, sums);
  for (std::size_t y = first; y < end; y += kRows) {
    Rows rows;
    std::uint8_t* dest[kRows];
    for (std::size_t i = 0; i < kRows; ++i) {
      const auto at = static_cast<std::ptrdiff_t>(std::min(y + i, end - 1));
      rows.in[i] = row(at + radius);
      rows.out[i] = row(at - radius - 1);
      dest[i] = y + i < end ? blur.dest + (y + i) * blur.destRowBytes : spareRow;
    }
    std::size_t x = 0;
    for (; x + kLoad <= blur.width; x += kLoad) {
      downColumns(rows, x * 4, sums + x * 4, means + x / 2 * kSums, mean);
    }
    if (x < blur.width) {
      std::uint8_t copy[2 * kRows][kLoad * 4] = {};
      downColumns(rows.end(x, blur.width - x, copy), 0, sums + x * 4, means + x / 2 * kSums, mean);
    }
    extendEdges(means, blur.width, halo);
    (blur.boxWidth / 2 % 2 != 0 ? alongRows<true> : alongRows<false>)(means, blur.width, halo, along, dest);
  }
}

} // namespace
} // namespace HWY_NAMESPACE
} // namespace qvdevice
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace qvdevice {

namespace {
HWY_EXPORT(scratchSize);
HWY_EXPORT(blurRows);
} // namespace

bool isNarrowBlur(const BoxBlur& blur) {
  return hasNarrowMean(blur.boxWidth) && hasNarrowMean(blur.boxHeight) && blur.width == blur.srcWidth &&
         blur.height == blur.srcHeight;
}

std::size_t narrowScratch(const BoxBlur& blur) { return HWY_DYNAMIC_DISPATCH(scratchSize)(blur); }

void blurRowsNarrow(const BoxBlur& blur, std::size_t first, std::size_t end, void* scratch) {
  HWY_DYNAMIC_DISPATCH(blurRows)(blur, first, end, scratch);
}

} // namespace qvdevice
#endif
