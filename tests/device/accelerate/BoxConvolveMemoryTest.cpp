// The temporary buffer: asked for, given, or made for the call.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>

#include <Accelerate/Convolution.h>

#include "Accelerate/Workers.h"
#include "Picture.h"
#include "Reference.h"
#include "support/Allocations.h"

#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
// Memory that cannot be had is to be told to whoever asked, as without them.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }
extern "C" const char* __tsan_default_options() { return "allocator_may_return_null=1"; }
#endif

namespace {

vImage_Error convolve(const Picture& from, const Picture& to, std::uint32_t box, void* temporary, vImage_Flags flags) {
  const vImage_Buffer source = from.buffer();
  const vImage_Buffer dest = to.buffer();
  return vImageBoxConvolve_ARGB8888(&source, &dest, temporary, 0, 0, box, box, nullptr, flags);
}

TEST(BoxConvolveMemoryTest, theSizeIsAskedForWithoutAnyData) {
  vImage_Buffer source = {.data = nullptr, .height = 50, .width = 60, .rowBytes = 240};
  const vImage_Buffer dest = source;
  EXPECT_GT(vImageBoxConvolve_ARGB8888(&source, &dest, nullptr, 0, 0, 9, 9, nullptr, 136), 0);
}

TEST(BoxConvolveMemoryTest, askingForTheSizeWritesNothing) {
  const Picture source = Picture::random(60, 50);
  const Picture dest(60, 50);
  EXPECT_GT(convolve(source, dest, 9, nullptr, 136), 0);
  EXPECT_EQ(dest, Picture(60, 50));
}

TEST(BoxConvolveMemoryTest, whatIsRefusedHasNoSize) {
  const Picture source = Picture::random(60, 50);
  const Picture dest(60, 50);
  EXPECT_EQ(convolve(source, dest, 8, nullptr, 136), -21767);
  EXPECT_EQ(convolve(source, dest, 9, nullptr, 128), -21768);
  EXPECT_EQ(vImageBoxConvolve_ARGB8888(nullptr, nullptr, nullptr, 0, 0, 9, 9, nullptr, 136), -21772);
}

TEST(BoxConvolveMemoryTest, noPixelsNeedNoTemporaryBuffer) {
  const Picture source = Picture::random(4, 4);
  const Picture dest(0, 4);
  EXPECT_EQ(convolve(source, dest, 9, nullptr, 136), 0);
}

TEST(BoxConvolveMemoryTest, aTemporaryBufferOfThatSizeIsEnoughAtAnyAddress) {
  for (const std::uint32_t box : {1U, 3U, 5U, 121U, 255U, 257U}) {
    for (const auto& [width, height] :
         {std::pair{1U, 1U}, std::pair{3U, 2U}, std::pair{33U, 17U}, std::pair{200U, 600U}}) {
      const Picture source = Picture::random(width, height);
      const Picture dest(width, height);
      const vImage_Error size = convolve(source, dest, box, nullptr, 136);
      ASSERT_GT(size, 0);
      for (const std::size_t shift : {0U, 1U, 16U, 63U}) {
        // With exact ends, which AddressSanitizer watches, and so does what is written after them.
        const auto bytes = static_cast<std::size_t>(size);
        const std::unique_ptr<std::uint8_t[]> memory(new std::uint8_t[shift + bytes + 32]);
        std::memset(memory.get(), 0x5A, shift + bytes + 32);
        ASSERT_EQ(convolve(source, dest, box, memory.get() + shift, 8), kvImageNoError);
        EXPECT_EQ(dest, blurred(source, box, box, dest)) << width << " x " << height << ", box " << box;
        for (std::size_t i = 0; i < 32; ++i) {
          ASSERT_EQ(memory[shift + bytes + i], 0x5A);
        }
      }
    }
  }
}

TEST(BoxConvolveMemoryTest, theSizeHoldsForTheBuffersExchangedAndOtherFlags) {
  const Picture a = Picture::random(99, 300);
  const Picture b = Picture::random(99, 300, 2);
  const vImage_Error size = convolve(a, b, 31, nullptr, 136);
  EXPECT_EQ(convolve(b, a, 31, nullptr, 136), size);
  EXPECT_EQ(convolve(b, a, 31, nullptr, 136 | kvImageDoNotTile), size);
}

TEST(BoxConvolveMemoryTest, itIsSmallBesideTheImage) {
  const vImage_Buffer buffer = {.data = nullptr, .height = 2160, .width = 3840, .rowBytes = 3840 * 4};
  qvdevice::setWorkerCount(2);
  const vImage_Error size = vImageBoxConvolve_ARGB8888(&buffer, &buffer, nullptr, 0, 0, 121, 121, nullptr, 136);
  EXPECT_GT(size, 0);
  EXPECT_LT(size, 3840 * 2160 * 4 / 100);
}

TEST(BoxConvolveMemoryTest, withATemporaryBufferNothingIsAllocatedAndWithoutOneThatAlone) {
  const Picture source = Picture::random(200, 600);
  const Picture dest(200, 600);
  const std::unique_ptr<std::uint8_t[]> memory(
      new std::uint8_t[static_cast<std::size_t>(convolve(source, dest, 31, nullptr, 136))]);
  ASSERT_EQ(convolve(source, dest, 31, memory.get(), 8), kvImageNoError); // threads are started the first time
  EXPECT_EQ(allocationsIn([&] { convolve(source, dest, 31, memory.get(), 8); }), 0U);
  EXPECT_EQ(allocationsIn([&] { convolve(source, dest, 31, nullptr, 8); }), 1U);
}

TEST(BoxConvolveMemoryTest, memoryThatCannotBeHadIsAnError) {
  // Rows as long as half of the address space: the buffers cannot be there either, so nothing may look at them first.
  std::uint8_t pixel[4] = {1, 2, 3, 4};
  const std::size_t width = std::size_t{1} << 45;
  const vImage_Buffer source = {.data = pixel, .height = 1, .width = width, .rowBytes = width * 4};
  const vImage_Buffer dest = {.data = reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(pixel) + width * 4),
                              .height = 1,
                              .width = width,
                              .rowBytes = width * 4};
  EXPECT_EQ(vImageBoxConvolve_ARGB8888(&source, &dest, nullptr, 0, 0, 3, 3, nullptr, 8), -21771);
}

TEST(BoxConvolveMemoryTest, aSizeThatNoMemoryHasIsAnErrorAlreadyWhenItIsAskedFor) {
  const std::size_t width = std::size_t{1} << 50;
  const vImage_Buffer buffer = {.data = nullptr, .height = 1, .width = width, .rowBytes = width * 4};
  EXPECT_EQ(vImageBoxConvolve_ARGB8888(&buffer, &buffer, nullptr, 0, 0, 3, 3, nullptr, 136), -21771);
}

} // namespace
