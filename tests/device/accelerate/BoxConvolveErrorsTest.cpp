// What vImageBoxConvolve_ARGB8888 refuses, with which error, and that it then leaves everything as it is.
#include <gtest/gtest.h>

#include <Accelerate/Convolution.h>

#include "Picture.h"

namespace {

class BoxConvolveErrorsTest : public testing::Test {
protected:
  vImage_Error convolve(vImage_Flags flags = kvImageEdgeExtend, std::uint32_t boxHeight = 3,
                        std::uint32_t boxWidth = 3) {
    return vImageBoxConvolve_ARGB8888(&source, &dest, nullptr, x, y, boxHeight, boxWidth, background, flags);
  }

  void TearDown() override { EXPECT_EQ(written, Picture(8, 6)); }

  const Picture pixels = Picture::random(8, 6);
  const Picture written = Picture(8, 6);
  vImage_Buffer source = pixels.buffer();
  vImage_Buffer dest = written.buffer();
  std::size_t x = 0;
  std::size_t y = 0;
  const Pixel_8888 background = {1, 2, 3, 4};
};

TEST_F(BoxConvolveErrorsTest, noBuffers) {
  EXPECT_EQ(vImageBoxConvolve_ARGB8888(nullptr, &dest, nullptr, 0, 0, 3, 3, nullptr, kvImageEdgeExtend), -21772);
  EXPECT_EQ(vImageBoxConvolve_ARGB8888(&source, nullptr, nullptr, 0, 0, 3, 3, nullptr, kvImageEdgeExtend), -21772);
}

TEST_F(BoxConvolveErrorsTest, buffersWithoutData) {
  source.data = nullptr;
  EXPECT_EQ(convolve(), -21772);
  source = pixels.buffer();
  dest.data = nullptr;
  EXPECT_EQ(convolve(), -21772);
}

TEST_F(BoxConvolveErrorsTest, evenSizes) {
  EXPECT_EQ(convolve(kvImageEdgeExtend, 2, 3), -21767);
  EXPECT_EQ(convolve(kvImageEdgeExtend, 3, 2), -21767);
  EXPECT_EQ(convolve(kvImageEdgeExtend, 0, 3), -21767);
  EXPECT_EQ(convolve(kvImageEdgeExtend, 3, 0), -21767);
  EXPECT_EQ(convolve(kvImageEdgeExtend, 0xFFFFFFFE, 3), -21767);
}

TEST_F(BoxConvolveErrorsTest, noEdgesAtAll) { EXPECT_EQ(convolve(kvImageNoFlags), -21768); }

TEST_F(BoxConvolveErrorsTest, edgesOfAnotherKind) {
  EXPECT_EQ(convolve(kvImageBackgroundColorFill), -21768);
  EXPECT_EQ(convolve(kvImageCopyInPlace), -21768);
  EXPECT_EQ(convolve(kvImageTruncateKernel), -21768);
}

TEST_F(BoxConvolveErrorsTest, edgesOfTwoKinds) {
  EXPECT_EQ(convolve(kvImageEdgeExtend | kvImageBackgroundColorFill), -21768);
  EXPECT_EQ(convolve(kvImageEdgeExtend | kvImageTruncateKernel), -21768);
}

TEST_F(BoxConvolveErrorsTest, flagsThatMeanNothingHere) {
  for (const vImage_Flags flag : {1U, 32U, 256U, 512U, 1024U, 2048U, 4096U, 0x80000000U}) {
    EXPECT_EQ(convolve(kvImageEdgeExtend | flag), -21775) << flag;
  }
}

TEST_F(BoxConvolveErrorsTest, aRegionGreaterThanTheSource) {
  source = pixels.part(0, 0, 7, 6);
  EXPECT_EQ(convolve(), -21766);
  source = pixels.part(0, 0, 8, 5);
  EXPECT_EQ(convolve(), -21766);
}

TEST_F(BoxConvolveErrorsTest, aRegionThatLeavesTheSource) {
  x = 1;
  EXPECT_EQ(convolve(), -21769);
  x = ~std::size_t{0};
  EXPECT_EQ(convolve(), -21769);
  x = 0;
  y = 1;
  EXPECT_EQ(convolve(), -21770);
  dest = written.part(0, 0, 8, 4);
  y = 3;
  EXPECT_EQ(convolve(), -21770);
}

TEST_F(BoxConvolveErrorsTest, rowsShorterThanTheirPixels) {
  source.rowBytes = 31;
  EXPECT_EQ(convolve(), -21777);
  source = pixels.buffer();
  dest.rowBytes = 31;
  EXPECT_EQ(convolve(), -21777);
}

TEST_F(BoxConvolveErrorsTest, rowsThatLeaveTheAddressSpace) {
  source.rowBytes = ~std::size_t{0} / 4;
  EXPECT_EQ(convolve(), -21777);
}

TEST_F(BoxConvolveErrorsTest, inPlace) {
  const Picture before = pixels;
  dest = source;
  EXPECT_EQ(convolve(), -21780);
  dest = pixels.part(0, 1, 8, 5);
  EXPECT_EQ(convolve(), -21780);
  source = pixels.part(3, 0, 4, 6);
  dest = pixels.part(0, 0, 4, 6);
  EXPECT_EQ(convolve(), -21780);
  EXPECT_EQ(pixels, before);
}

TEST_F(BoxConvolveErrorsTest, aDestinationOfNoPixelsIsNoError) {
  dest.width = 0;
  EXPECT_EQ(convolve(), 0);
  dest = written.buffer();
  dest.height = 0;
  EXPECT_EQ(convolve(), 0);
}

TEST_F(BoxConvolveErrorsTest, theFirstThatAppliesIsAnswered) {
  source.rowBytes = 1;
  x = 9;
  EXPECT_EQ(convolve(kvImageEdgeExtend | kvImageTruncateKernel | kvImageNoAllocate, 2, 3), -21775);
  EXPECT_EQ(convolve(kvImageEdgeExtend | kvImageTruncateKernel, 2, 3), -21768);
  EXPECT_EQ(convolve(kvImageEdgeExtend, 2, 3), -21767);
  EXPECT_EQ(convolve(kvImageEdgeExtend, 3, 3), -21769);
  x = 0;
  EXPECT_EQ(convolve(kvImageEdgeExtend, 3, 3), -21777);
}

} // namespace
