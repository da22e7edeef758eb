// The mean of the pixels around each pixel: first down the columns, then along the rows, each rounded to the nearest
// value. Running sums make the time independent of the box's size.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qvdevice {

struct BoxBlur {
  const std::uint8_t* src;
  std::size_t srcRowBytes;
  std::size_t srcWidth;
  std::size_t srcHeight;
  /// Where the region lies in src; its size is that of dest.
  std::size_t x;
  std::size_t y;
  std::uint8_t* dest;
  std::size_t destRowBytes;
  std::size_t width;
  std::size_t height;
  /// Odd.
  std::uint32_t boxWidth;
  std::uint32_t boxHeight;
};

/// Scratch memory of each thread begins at a multiple of this, and so is its size.
inline constexpr std::size_t kScratchAlignment = 64;

/// Whether the region is all of src and the sums of the box's sides fit in 16 bits: done with vectors.
bool isNarrowBlur(const BoxBlur& blur);

/// What blurRowsNarrow() and blurRowsWide() need for `blur`, in bytes. Nothing overflows for a width up to 2^48.
std::size_t narrowScratch(const BoxBlur& blur);
std::size_t wideScratch(const BoxBlur& blur);

/// The rows [first, end) of dest. The scratch memory is the thread's own.
void blurRowsNarrow(const BoxBlur& blur, std::size_t first, std::size_t end, void* scratch);

/// The same for any box and any region.
void blurRowsWide(const BoxBlur& blur, std::size_t first, std::size_t end, void* scratch);

} // namespace qvdevice
