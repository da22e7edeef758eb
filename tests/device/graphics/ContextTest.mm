#import "Graphics.h"

#include <cmath>

using namespace graphics;
using support::noise;
using support::Picture;
using support::Pixel;

namespace {

constexpr Pixel kClear{0, 0, 0, 0};
constexpr Pixel kRed{0, 0, 255, 255};
constexpr Pixel kBlue{255, 0, 0, 255};

class Context : public Graphics {};

CGImageRef bitmapOf(const Picture &picture, bool opaque = false) {
  return [support::imageOf(picture, 1, opaque) CGImage];
}

void setRed(CGContextRef context) { CGContextSetRGBFillColor(context, 1, 0, 0, 1); }

TEST_F(Context, drawsPixelsOnPixelsExactly) {
  const Picture picture = noise(37, 23, false);
  CGContextRef target = context(37, 23);
  CGContextDrawImage(target, CGRectMake(0, 0, 37, 23), bitmapOf(picture));
  EXPECT_EQ(drawn(target), picture);
}

TEST_F(Context, drawsAnOpaqueImageAsOpaqueWhateverItsFourthByteHolds) {
  CGContextRef target = context(1, 1);
  CGContextDrawImage(target, CGRectMake(0, 0, 1, 1),
                     bitmapOf(Picture(1, 1, [](size_t, size_t) { return Pixel{1, 2, 3, 0}; }), true));
  EXPECT_EQ(drawn(target).at(0, 0), (Pixel{1, 2, 3, 255}));
}

TEST_F(Context, drawsPixelsExactlyThroughAFlipAndAScaleThatComeToNothing) {
  const Picture picture = noise(31, 17, false);
  CGContextRef target = context(31, 17);
  CGContextTranslateCTM(target, 0, 17);
  CGContextScaleCTM(target, 3, -3);
  CGContextScaleCTM(target, 1, -1);
  CGContextTranslateCTM(target, 0, -17.0 / 3);
  CGContextDrawImage(target, CGRectMake(0, 0, 31.0 / 3, 17.0 / 3), bitmapOf(picture));
  EXPECT_EQ(drawn(target), picture);
}

TEST_F(Context, hasTheImagesFirstRowWhereYIsGreatest) {
  const Picture picture(1, 2, [](size_t, size_t y) { return y == 0 ? kRed : kBlue; });
  CGContextRef target = context(1, 3);
  CGContextDrawImage(target, CGRectMake(0, 1, 1, 2), bitmapOf(picture));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kRed, kBlue, kClear}));
  CGContextScaleCTM(target, 1, -1); // y grows downwards now: the image stands on its head
  CGContextTranslateCTM(target, 0, -3);
  CGContextDrawImage(target, CGRectMake(0, 0, 1, 2), bitmapOf(picture));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kBlue, kRed, kClear}));
}

TEST_F(Context, stretchesAnImageOverItsRectangleAndNoFurther) {
  const Picture picture(1, 1, [](size_t, size_t) { return kRed; });
  CGContextRef target = context(4, 4);
  CGContextDrawImage(target, CGRectMake(1, 1, 2, 2), bitmapOf(picture));
  const Picture result = drawn(target);
  for (size_t y = 0; y < 4; ++y) {
    for (size_t x = 0; x < 4; ++x) {
      EXPECT_EQ(result.at(x, y), (x == 1 || x == 2) && (y == 1 || y == 2) ? kRed : kClear) << x << " " << y;
    }
  }
}

TEST_F(Context, takesARectangleOfNegativeSizeForTheSamePlace) {
  CGContextRef target = context(2, 2);
  setRed(target);
  CGContextFillRect(target, CGRectMake(2, 2, -1, -1));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kClear, kRed, kClear, kClear}));
}

TEST_F(Context, blendsAColourOverWhatIsThere) {
  CGContextRef target = context(1, 1);
  CGContextSetRGBFillColor(target, 0, 0, 1, 1);
  CGContextFillRect(target, CGRectMake(0, 0, 1, 1));
  CGContextSetRGBFillColor(target, 1, 0, 0, 0.5);
  CGContextFillRect(target, CGRectMake(0, 0, 1, 1));
  const Pixel result = drawn(target).at(0, 0);
  EXPECT_NEAR(result[0], 127.5, 1);
  EXPECT_NEAR(result[2], 127.5, 1);
  EXPECT_EQ(result[3], 255);
}

TEST_F(Context, clearsARectangle) {
  CGContextRef target = context(2, 1);
  setRed(target);
  CGContextFillRect(target, CGRectMake(0, 0, 2, 1));
  CGContextClearRect(target, CGRectMake(0, 0, 1, 1));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kClear, kRed}));
}

TEST_F(Context, fillsWithBlackUntilItIsGivenAColour) {
  CGContextRef target = context(1, 1);
  CGContextFillRect(target, CGRectMake(0, 0, 1, 1));
  EXPECT_EQ(drawn(target).at(0, 0), (Pixel{0, 0, 0, 255}));
}

TEST_F(Context, restoresTransformationClipAndColour) {
  CGContextRef target = context(3, 1);
  setRed(target);
  CGContextSaveGState(target);
  CGContextTranslateCTM(target, 1, 0);
  CGContextClipToRect(target, CGRectMake(0, 0, 1, 1));
  CGContextSetRGBFillColor(target, 0, 0, 1, 1);
  CGContextFillRect(target, CGRectMake(0, 0, 9, 1));
  CGContextRestoreGState(target);
  CGContextRestoreGState(target); // once too often: nothing happens
  CGContextFillRect(target, CGRectMake(0, 0, 1, 1));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kRed, kBlue, kClear}));
}

TEST_F(Context, letsPaintThroughAsMuchAsAGreyMaskSays) {
  CGContextRef target = context(3, 1);
  setRed(target);
  UIImage *const mask = support::grayImage(3, 1, [](size_t x, size_t) { return x == 0 ? 0 : x == 1 ? 128 : 255; });
  CGContextSaveGState(target);
  CGContextClipToMask(target, CGRectMake(0, 0, 3, 1), [mask CGImage]);
  CGContextFillRect(target, CGRectMake(0, 0, 3, 1));
  CGContextRestoreGState(target);
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kClear, {0, 0, 128, 128}, kRed}));
  CGContextFillRect(target, CGRectMake(0, 0, 1, 1)); // the mask has gone with the state
  EXPECT_EQ(drawn(target).at(0, 0), kRed);
}

TEST_F(Context, letsNothingThroughBesideTheMask) {
  CGContextRef target = context(3, 1);
  setRed(target);
  CGContextClipToMask(target, CGRectMake(1, 0, 1, 1),
                      [support::grayImage(1, 1, [](size_t, size_t) { return 255; }) CGImage]);
  CGContextFillRect(target, CGRectMake(0, 0, 3, 1));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kClear, kRed, kClear}));
}

TEST_F(Context, letsThroughWhatEveryMaskLetsThrough) {
  CGContextRef target = context(4, 1);
  setRed(target);
  UIImage *const right = support::grayImage(4, 1, [](size_t x, size_t) { return x >= 1 ? 255 : 0; });
  UIImage *const left = support::grayImage(4, 1, [](size_t x, size_t) { return x <= 2 ? 255 : 0; });
  CGContextClipToMask(target, CGRectMake(0, 0, 4, 1), [right CGImage]);
  CGContextClipToMask(target, CGRectMake(0, 0, 4, 1), [left CGImage]);
  CGContextFillRect(target, CGRectMake(0, 0, 4, 1));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kClear, kRed, kRed, kClear}));
}

TEST_F(Context, takesAMasksAlphaWhereItHasOneAndTurnsAMaskImageRound) {
  const auto through = [](CGImageRef mask) {
    CGContextRef target = context(1, 1);
    setRed(target);
    CGContextClipToMask(target, CGRectMake(0, 0, 1, 1), mask);
    CGContextFillRect(target, CGRectMake(0, 0, 1, 1));
    return drawn(target).at(0, 0)[3];
  };
  EXPECT_EQ(through(bitmapOf(Picture(1, 1, [](size_t, size_t) { return Pixel{60, 60, 60, 64}; }))), 64);
  EXPECT_EQ(through(bitmapOf(Picture(1, 1, [](size_t, size_t) { return Pixel{60, 60, 60, 64}; }), true)), 255);
  const std::uint8_t covering = 64;
  CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, &covering, 1, nullptr);
  CGImageRef mask = CGImageMaskCreate(1, 1, 8, 8, 1, provider, nullptr, false);
  EXPECT_TRUE(CGImageIsMask(mask));
  EXPECT_EQ(through(mask), 191);
  CGImageRelease(mask);
  CGDataProviderRelease(provider);
}

TEST_F(Context, drawsAnImageThroughAMaskOfAnotherSize) {
  const Picture picture = noise(8, 8, true);
  CGContextRef target = context(8, 8);
  UIImage *const mask = support::grayImage(2, 1, [](size_t x, size_t) { return x == 0 ? 0 : 255; });
  CGContextClipToMask(target, CGRectMake(0, 0, 8, 8), [mask CGImage]);
  CGContextDrawImage(target, CGRectMake(0, 0, 8, 8), bitmapOf(picture, true));
  const Picture result = drawn(target);
  for (size_t y = 0; y < 8; ++y) {
    EXPECT_EQ(result.at(0, y), kClear);
    EXPECT_EQ(result.at(7, y), picture.at(7, y));
  }
}

TEST_F(Context, drawsIntoMemoryOfSomebodyElse) {
  std::vector<Pixel> memory(6);
  CGContextRef target = CGBitmapContextCreate(memory.data(), 2, 2, 8, 12, rgb(), 8194);
  setRed(target);
  CGContextFillRect(target, CGRectMake(0, 1, 1, 1));
  EXPECT_EQ(CGBitmapContextGetData(target), memory.data());
  EXPECT_EQ(CGBitmapContextGetBytesPerRow(target), 12u);
  EXPECT_EQ(memory[0], kRed);
  CGContextRelease(target);
}

TEST_F(Context, ofAFormatOrSizeThatIsNotKnownIsNone) {
  std::uint32_t memory[4];
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 0, 1, 8, 0, rgb(), 8194), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 32768, 1, 8, 0, rgb(), 8194), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 1, 1, 8, 0, rgb(), 1), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 1, 1, 16, 0, rgb(), 8194), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 1, 1, 8, 0, gray(), 8194), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 1, 1, 8, 0, nullptr, 8194), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(memory, 2, 2, 8, 7, rgb(), 8194), nullptr);
  EXPECT_EQ(CGBitmapContextCreate(memory, 1, 1, 8, 5, rgb(), 8194), nullptr);
}

TEST_F(Context, isNotHarmedByNumbersThatAreNone) {
  CGContextRef target = context(2, 1);
  setRed(target);
  CGContextScaleCTM(target, 0, 1);
  CGContextScaleCTM(target, NAN, 1);
  CGContextTranslateCTM(target, INFINITY, 0);
  CGContextRotateCTM(target, NAN);
  CGContextFillRect(target, CGRectMake(0, 0, NAN, 1));
  CGContextFillRect(target, CGRectMake(0, 0, 0, 1));
  CGContextDrawImage(target, CGRectMake(-INFINITY, 0, 1, 1), bitmapOf(noise(1, 1, true)));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kClear, kClear}));
  CGContextFillRect(target, CGRectMake(0, 0, 1, 1));
  EXPECT_EQ(drawn(target).pixels, (std::vector<Pixel>{kRed, kClear}));
}

TEST_F(Context, thatMissesAnImageThatIsTooLargeGivesNoPicture) {
  const std::vector<std::uint8_t> bytes(40000 * 4);
  CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, bytes.data(), bytes.size(), nullptr);
  CGImageRef wide =
      CGImageCreate(40000, 1, 8, 32, 160000, rgb(), 8194, provider, nullptr, false, kCGRenderingIntentDefault);
  CGContextRef target = context(1, 1);
  CGContextDrawImage(target, CGRectMake(0, 0, 1, 1), wide);
  EXPECT_EQ(CGBitmapContextCreateImage(target), nullptr);
  CGImageRelease(wide);
  CGDataProviderRelease(provider);
}

TEST_F(Context, thatIsNullIsDrawnIntoWithoutEffect) {
  CGContextSaveGState(nullptr);
  CGContextScaleCTM(nullptr, 1, 1);
  CGContextTranslateCTM(nullptr, 1, 1);
  CGContextClipToMask(nullptr, CGRectMake(0, 0, 1, 1), nullptr);
  CGContextDrawImage(nullptr, CGRectMake(0, 0, 1, 1), nullptr);
  CGContextSetFillColorWithColor(nullptr, nullptr);
  CGContextFillRect(nullptr, CGRectMake(0, 0, 1, 1));
  CGContextRestoreGState(nullptr);
  CGContextRelease(nullptr);
  EXPECT_EQ(CGBitmapContextCreateImage(nullptr), nullptr);
  EXPECT_EQ(CGBitmapContextGetData(nullptr), nullptr);
  EXPECT_EQ(CGBitmapContextGetWidth(nullptr), 0u);
}

} // namespace
