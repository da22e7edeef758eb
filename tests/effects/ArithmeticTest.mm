// Which boxes and which matrix vImage is asked for.
#import "Effects.h"
#import "VImageCalls.h"

#include <cmath>
#include <limits>
#include <optional>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kEpsilon = 1.1920928955078125e-07;

class EffectsArithmetic : public Effects {
protected:
  static UIImage *picture(CGFloat scale = 1) { return support::imageOf(support::noise(12, 12, true), scale, true); }

  /// The side of the box for a radius; nothing when nothing is blurred.
  static std::optional<std::uint32_t> box(CGFloat radius, CGFloat scale = 1) {
    VImageCalls &calls = takeNotes();
    calls.boxesAreOnlyNoted = true;
    EXPECT_NE(blurred(picture(scale), radius, nil, 1), nil);
    std::optional<std::uint32_t> side;
    for (const std::string &call : calls.calls) {
      unsigned width = 0, height = 0;
      char from = 0, to = 0;
      if (std::sscanf(call.c_str(), "BoxConvolve %c>%c+ %ux%u", &from, &to, &width, &height) == 4) {
        EXPECT_EQ(width, height);
        EXPECT_EQ(side.value_or(width), width);
        side = width;
      }
    }
    return side;
  }

  static std::vector<int16_t> matrix(CGFloat factor) {
    VImageCalls &calls = takeNotes();
    EXPECT_NE(blurred(picture(), 0, nil, factor), nil);
    return calls.matrix;
  }
};

TEST_F(EffectsArithmetic, takesTheBoxOfTheFormula) {
  // ((r * 3 * 2.50662827463 / 4) + 0.5) / 2, its floor made odd.
  EXPECT_EQ(box(3), 3u);     // 3.0700
  EXPECT_EQ(box(4), 5u);     // 4.0099: 4, made odd
  EXPECT_EQ(box(5), 5u);     // 4.9499: 4, made odd
  EXPECT_EQ(box(10), 9u);    // 9.6499
  EXPECT_EQ(box(20), 19u);   // 19.0497
  EXPECT_EQ(box(40), 37u);   // 37.8494
  EXPECT_EQ(box(60), 57u);   // 56.6491: 56, made odd
  EXPECT_EQ(box(128), 121u); // 120.5682: 120, made odd
}

TEST_F(EffectsArithmetic, takesThePointsTimesTheScale) {
  EXPECT_EQ(box(60, 2), 113u); // 113.0483
  EXPECT_EQ(box(20, 3), 57u);
}

TEST_F(EffectsArithmetic, takesABoxOfThreeForAPixelRadiusOfOne) {
  EXPECT_EQ(box(0.5, 2), 3u);
  EXPECT_EQ(box(1), 3u);
}

TEST_F(EffectsArithmetic, takesTheSmallestBoxUpToTwoPixels) {
  EXPECT_EQ(box(0.001), 3u);
  EXPECT_EQ(box(2), 3u);
  EXPECT_EQ(box(2.00000001), 3u);
}

TEST_F(EffectsArithmetic, blursByNoRadiusThatIsNotAboveTheEpsilon) {
  EXPECT_EQ(box(0), std::nullopt);
  EXPECT_EQ(box(-10), std::nullopt);
  EXPECT_EQ(box(-kInfinity), std::nullopt);
  EXPECT_EQ(box(kNoNumber), std::nullopt);
  EXPECT_EQ(box(kEpsilon), std::nullopt);
  EXPECT_EQ(box(std::nextafter(kEpsilon, 1.0)), 3u);
}

TEST_F(EffectsArithmetic, takesTheLargestBoxThatThereIsForARadiusThatHasNone) {
  EXPECT_EQ(box(1e9), 939985603u);
  EXPECT_EQ(box(1e10), 4294967295u);
  EXPECT_EQ(box(std::numeric_limits<double>::max()), 4294967295u);
  EXPECT_EQ(box(kInfinity), 4294967295u);
}

TEST_F(EffectsArithmetic, takesTheMatrixOfTheFormula) {
  // 256 times the entries: 446.01, -14.79 | -146.47, 314.33 | -43.54, 417.21.
  EXPECT_THAT(matrix(1.8), ElementsAre(446, -15, -15, 0,   //
                                       -146, 314, -146, 0, //
                                       -44, -44, 417, 0,   //
                                       0, 0, 0, 256));
  // -219.03, 36.97 | 366.18, 110.18 | 108.85, -147.12.
  EXPECT_THAT(matrix(-1.0), ElementsAre(-219, 37, 37, 0,   //
                                        366, 110, 366, 0,  //
                                        109, 109, -147, 0, //
                                        0, 0, 0, 256));
  // 18.48 | 183.09 | 54.43: grey.
  EXPECT_THAT(matrix(0), ElementsAre(18, 18, 18, 0,    //
                                     183, 183, 183, 0, //
                                     54, 54, 54, 0,    //
                                     0, 0, 0, 256));
}

TEST_F(EffectsArithmetic, takes7873AndNot7874ForTheLastTerm) {
  // (0.2126 + 0.7873 * 20) * 256 is 4085.40; with 0.7874 it would be 4085.91.
  EXPECT_EQ(matrix(20)[10], 4085);
}

TEST_F(EffectsArithmetic, roundsHalvesAwayFromZeroInSinglePrecision) {
  // What makes the first entry just about 2.5 and -2.5 256ths: in single precision it is exactly that.
  EXPECT_EQ(matrix((2.5 / 256 - 0.0722) / 0.9278)[0], 3);
  EXPECT_EQ(matrix((-2.5 / 256 - 0.0722) / 0.9278)[0], -3);
  EXPECT_EQ(matrix(((2.5 - 1e-9) / 256 - 0.0722) / 0.9278)[0], 3);
}

TEST_F(EffectsArithmetic, leavesTheColoursWhenTheFactorIsAsGoodAsOneOrNoNumber) {
  EXPECT_THAT(matrix(1), IsEmpty());
  EXPECT_THAT(matrix(1 + kEpsilon / 2), IsEmpty());
  EXPECT_THAT(matrix(1 - kEpsilon / 2), IsEmpty());
  EXPECT_THAT(matrix(kNoNumber), IsEmpty());
  EXPECT_EQ(matrix(1 + 2 * kEpsilon).size(), 16u);
  EXPECT_EQ(matrix(1 - 2 * kEpsilon).size(), 16u);
}

TEST_F(EffectsArithmetic, holdsEntriesThatDoNotFitWithinSixteenBits) {
  EXPECT_THAT(matrix(kInfinity), ElementsAre(32767, -32768, -32768, 0, //
                                             -32768, 32767, -32768, 0, //
                                             -32768, -32768, 32767, 0, //
                                             0, 0, 0, 256));
  EXPECT_THAT(matrix(-kInfinity), ElementsAre(-32768, 32767, 32767, 0, //
                                              32767, -32768, 32767, 0, //
                                              32767, 32767, -32768, 0, //
                                              0, 0, 0, 256));
  // 1000 times: 237535 and -18465 | -182908 and 73092 | -54371 and 201603.
  EXPECT_THAT(matrix(1000), ElementsAre(32767, -18465, -18465, 0, //
                                        -32768, 32767, -32768, 0, //
                                        -32768, -32768, 32767, 0, //
                                        0, 0, 0, 256));
}

} // namespace
