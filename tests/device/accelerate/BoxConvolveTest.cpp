// The mean of a box, to the last bit.
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include <Accelerate/Convolution.h>

#include "Accelerate/Workers.h"
#include "Picture.h"
#include "Reference.h"
#include "Targets.h"

namespace {

struct Size {
  std::size_t width;
  std::size_t height;

  friend void PrintTo(const Size& size, std::ostream* to) { *to << size.width << " x " << size.height; }
};

vImage_Error blur(const Picture& from, const Picture& to, std::uint32_t boxWidth, std::uint32_t boxHeight,
                  std::size_t x = 0, std::size_t y = 0, vImage_Flags flags = 0) {
  const vImage_Buffer source = from.buffer();
  const vImage_Buffer dest = to.buffer();
  return vImageBoxConvolve_ARGB8888(&source, &dest, nullptr, x, y, boxHeight, boxWidth, nullptr,
                                    flags | kvImageEdgeExtend);
}

/// Whether vImage and the reference agree, and nothing beside the rows is touched.
testing::AssertionResult isExact(Size size, std::uint32_t boxWidth, std::uint32_t boxHeight, std::size_t padding = 0) {
  const Picture source = Picture::random(size.width, size.height, boxWidth, padding);
  const Picture empty(size.width, size.height, padding);
  const Picture result = empty;
  if (const vImage_Error error = blur(source, result, boxWidth, boxHeight); error != kvImageNoError)
    return testing::AssertionFailure() << "error " << error;
  if (result == blurred(source, boxWidth, boxHeight, empty)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << size.width << " x " << size.height << ", box " << boxWidth << " x "
                                     << boxHeight;
}

class EveryBoxTest : public testing::TestWithParam<Size> {};

TEST_P(EveryBoxTest, isTheReferenceInEachOddSizeFrom1To121) {
  for (std::uint32_t box = 1; box <= 121; box += 2) {
    EXPECT_TRUE(isExact(GetParam(), box, box));
  }
}

INSTANTIATE_TEST_SUITE_P(Sizes, EveryBoxTest,
                         testing::Values(Size{1, 1}, Size{2, 1}, Size{1, 2}, Size{3, 3}, Size{4, 4}, Size{5, 7},
                                         Size{7, 5}, Size{8, 8}, Size{9, 2}, Size{16, 3}, Size{33, 17}, Size{1, 129},
                                         Size{257, 1}, Size{64, 64}, Size{120, 61}, Size{121, 60}, Size{122, 123},
                                         Size{256, 128}, Size{257, 129}),
                         [](const auto& size) {
                           return std::to_string(size.param.width) + "x" + std::to_string(size.param.height);
                         });

TEST(BoxConvolveTest, isTheReferenceInEverySizeUpTo40By12) {
  for (std::size_t width = 1; width <= 40; ++width) {
    for (std::size_t height = 1; height <= 12; ++height) {
      for (const std::uint32_t box : {3U, 5U, 31U}) {
        EXPECT_TRUE(isExact({width, height}, box, box));
      }
    }
  }
}

TEST(BoxConvolveTest, isTheReferenceInEveryWidthAndHeightUpTo257By129) {
  for (std::size_t width = 1; width <= 257; ++width) {
    EXPECT_TRUE(isExact({width, 3}, 9, 3));
    EXPECT_TRUE(isExact({width, 2}, 7, 5));
  }
  for (std::size_t height = 1; height <= 129; ++height) {
    EXPECT_TRUE(isExact({5, height}, 3, 9));
    EXPECT_TRUE(isExact({6, height}, 5, 31));
  }
}

TEST(BoxConvolveTest, thereIsVectorCodeForThisProcessor) {
#if defined(__aarch64__)
  ASSERT_EQ(targets().size(), 1U);
  EXPECT_EQ(name(targets().front()), "NEON");
#else
  EXPECT_GT(targets().size(), 1U);
#endif
}

TEST(BoxConvolveTest, isTheReferenceOnEveryKindOfProcessor) {
  ASSERT_FALSE(targets().empty());
  for (const std::int64_t target : targets()) {
    SCOPED_TRACE(name(target));
    const OnTarget here(target);
    for (const Size size : {Size{1, 1}, Size{7, 5}, Size{33, 18}, Size{257, 129}}) {
      for (const std::uint32_t box : {1U, 3U, 5U, 31U, 121U, 255U, 257U}) {
        EXPECT_TRUE(isExact(size, box, box));
      }
    }
  }
}

TEST(BoxConvolveTest, aBoxNeedNotBeSquare) {
  for (const std::uint32_t width : {1U, 3U, 5U, 121U}) {
    for (const std::uint32_t height : {1U, 3U, 7U, 99U}) {
      EXPECT_TRUE(isExact({61, 43}, width, height));
    }
  }
}

TEST(BoxConvolveTest, aBoxMayBeGreaterThanTheImage) {
  for (const std::uint32_t box : {123U, 127U, 129U, 253U, 255U, 257U, 259U, 1001U}) {
    EXPECT_TRUE(isExact({37, 21}, box, box));
    EXPECT_TRUE(isExact({21, 37}, box, 3));
    EXPECT_TRUE(isExact({21, 37}, 3, box));
  }
}

TEST(BoxConvolveTest, theGreatestBoxesGiveTheMeanOfTheEdges) {
  // Of 2^32 - 1 places one half and a little more is before the middle pixel or on it.
  Picture source(2, 1);
  for (std::size_t c = 0; c < 4; ++c) {
    source.at(0, 0, c) = 0;
    source.at(1, 0, c) = 255;
  }
  const Picture result(2, 1);
  ASSERT_EQ(blur(source, result, 0xFFFFFFFF, 0xFFFFFFFF), kvImageNoError);
  // 2^31 zeros and 2^31 - 1 times 255 are a little below 127.5; one place further on, a little above.
  EXPECT_EQ(result.at(0, 0, 0), 127);
  EXPECT_EQ(result.at(1, 0, 0), 128);
}

TEST(BoxConvolveTest, everyMeanOfEveryNarrowBoxIsRoundedToTheNearest) {
  // Down one column: a box of n rows whose sum is each of the sums that n bytes can have at the ends of a mean's range.
  for (std::uint32_t box = 3; box <= 255; box += 2) {
    for (std::uint32_t mean = 1; mean <= 255; ++mean) {
      for (const std::uint32_t sum : {mean * box - box / 2 - 1, mean * box - box / 2}) {
        Picture source(1, box);
        for (std::uint32_t y = 0; y < box; ++y) {
          source.at(0, y, 2) = static_cast<std::uint8_t>(sum / box + (y < sum % box ? 1 : 0));
        }
        const Picture result(1, box);
        ASSERT_EQ(blur(source, result, 3, box), kvImageNoError);
        ASSERT_EQ(result.at(0, box / 2, 2), sum == mean * box - box / 2 ? mean : mean - 1)
            << box << " rows, sum " << sum;
      }
    }
  }
}

TEST(BoxConvolveTest, whiteStaysWhiteAndBlackBlackInEveryBox) {
  Picture white(19, 11);
  Picture black(19, 11);
  for (std::size_t y = 0; y < 11; ++y) {
    for (std::size_t x = 0; x < 19 * 4; ++x) {
      white.at(0, y, x) = 255;
      black.at(0, y, x) = 0;
    }
  }
  for (std::uint32_t box = 1; box <= 301; box += 2) {
    const Picture result(19, 11);
    ASSERT_EQ(blur(white, result, box, box), kvImageNoError);
    EXPECT_EQ(result, white) << box;
    ASSERT_EQ(blur(black, result, box, box), kvImageNoError);
    EXPECT_EQ(result, black) << box;
  }
}

TEST(BoxConvolveTest, noColourExceedsItsAlphaWhenNoneDidBefore) {
  Picture source = Picture::random(90, 50);
  for (std::size_t y = 0; y < 50; ++y) {
    for (std::size_t x = 0; x < 90; ++x) {
      for (std::size_t c = 0; c < 3; ++c) {
        source.at(x, y, c) = std::min(source.at(x, y, c), source.at(x, y, 3));
      }
    }
  }
  for (const std::uint32_t box : {3U, 9U, 121U}) {
    const Picture result(90, 50);
    ASSERT_EQ(blur(source, result, box, box), kvImageNoError);
    for (std::size_t y = 0; y < 50; ++y) {
      for (std::size_t x = 0; x < 90; ++x) {
        for (std::size_t c = 0; c < 3; ++c) {
          ASSERT_LE(result.at(x, y, c), result.at(x, y, 3));
        }
      }
    }
  }
}

TEST(BoxConvolveTest, rowsMayBeFollowedByOtherBytesWhichStayAsTheyAre) {
  for (const std::size_t padding : {1U, 3U, 4U, 28U, 64U}) {
    EXPECT_TRUE(isExact({45, 22}, 5, 7, padding));
    EXPECT_TRUE(isExact({45, 22}, 257, 257, padding));
  }
}

TEST(BoxConvolveTest, whatLiesAroundTheRegionTakesPart) {
  const Picture source = Picture::random(40, 30);
  for (const Size size : {Size{40, 30}, Size{10, 30}, Size{40, 7}, Size{1, 1}, Size{13, 11}}) {
    for (const std::uint32_t box : {1U, 3U, 9U, 121U, 257U}) {
      for (const auto& [x, y] :
           {Size{0, 0}, Size{40 - size.width, 30 - size.height}, Size{(40 - size.width) / 2, (30 - size.height) / 3}}) {
        const Picture empty(size.width, size.height);
        const Picture result = empty;
        ASSERT_EQ(blur(source, result, box, box, x, y), kvImageNoError);
        EXPECT_EQ(result, blurred(source, box, box, empty, x, y)) << box << " at " << x << ", " << y;
      }
    }
  }
}

TEST(BoxConvolveTest, threadsGiveTheSameAsOne) {
  const Picture source = Picture::random(301, 777);
  for (const std::uint32_t box : {3U, 31U, 121U, 257U}) {
    const Picture alone(301, 777);
    ASSERT_EQ(blur(source, alone, box, box, 0, 0, kvImageDoNotTile), kvImageNoError);
    for (const std::size_t threads : {1U, 2U, 3U, 7U}) {
      qvdevice::setWorkerCount(threads);
      const Picture shared(301, 777);
      ASSERT_EQ(blur(source, shared, box, box), kvImageNoError);
      EXPECT_EQ(shared, alone) << "box " << box << ", " << threads << " threads";
    }
  }
}

TEST(BoxConvolveTest, twoHalvesOfOnePictureAreNoOverlap) {
  Picture both = Picture::random(40, 9);
  const Picture before = both;
  const vImage_Buffer left = both.part(0, 0, 20, 9);
  const vImage_Buffer right = both.part(20, 0, 20, 9);
  ASSERT_EQ(vImageBoxConvolve_ARGB8888(&left, &right, nullptr, 0, 0, 3, 3, nullptr, kvImageEdgeExtend), kvImageNoError);
  Picture half(20, 9);
  for (std::size_t y = 0; y < 9; ++y) {
    for (std::size_t x = 0; x < 20 * 4; ++x) {
      half.at(0, y, x) = before.at(0, y, x);
    }
  }
  const Picture expected = blurred(half, 3, 3, half);
  for (std::size_t y = 0; y < 9; ++y) {
    for (std::size_t x = 0; x < 20 * 4; ++x) {
      ASSERT_EQ(both.at(0, y, x), before.at(0, y, x));
      ASSERT_EQ(both.at(20, y, x), expected.at(0, y, x));
    }
  }
}

} // namespace
