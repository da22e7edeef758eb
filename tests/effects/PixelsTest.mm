// The results, pixel by pixel, against arithmetic that the library has no part in.
#import "Effects.h"
#include "Reference.h"
#import "VImageCalls.h"

#include <cmath>
#include <limits>

using support::Picture;
using support::Pixel;
using testing::IsEmpty;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

class EffectsPixels : public Effects {};

reference::Pixels plain(const Picture &picture) {
  return {static_cast<long>(picture.width), static_cast<long>(picture.height), picture.pixels};
}

Picture back(const reference::Pixels &pixels) {
  Picture picture(static_cast<size_t>(pixels.width), static_cast<size_t>(pixels.height));
  picture.pixels = pixels.bytes;
  return picture;
}

Picture threeBoxes(const Picture &picture, long size) {
  return back(reference::box(reference::box(reference::box(plain(picture), size), size), size));
}

constexpr std::array<int, 16> kMoreColour{446, -15, -15, 0, -146, 314, -146, 0, -44, -44, 417, 0, 0, 0, 0, 256};
constexpr std::array<int, 16> kTurnedRound{-219, 37, 37, 0, 366, 110, 366, 0, 109, 109, -147, 0, 0, 0, 0, 256};

Picture recoloured(const Picture &picture, const std::array<int, 16> &matrix) {
  return back(reference::multiplied(plain(picture), matrix));
}

/// A colour, as 0 to 1 and not multiplied, over the picture.
Picture under(const Picture &picture, double red, double green, double blue, double alpha) {
  return Picture(picture.width, picture.height, [&](size_t x, size_t y) {
    const Pixel &pixel = picture.at(x, y);
    const auto over = [&](double part, std::uint8_t below) {
      return static_cast<std::uint8_t>(std::lround(part * alpha * 255 + below * (1 - alpha)));
    };
    return Pixel{over(blue, pixel[0]), over(green, pixel[1]), over(red, pixel[2]), over(1, pixel[3])};
  });
}

/// The effect over the picture as much as the mask says.
Picture through(const Picture &effect, const Picture &picture,
                const std::function<std::uint8_t(size_t, size_t)> &mask) {
  return Picture(picture.width, picture.height, [&](size_t x, size_t y) {
    Pixel result;
    const double share = mask(x, y) / 255.0;
    for (size_t part = 0; part < 4; ++part) {
      const double below = picture.at(x, y)[part] * (1 - share * effect.at(x, y)[3] / 255);
      result[part] = static_cast<std::uint8_t>(std::lround(effect.at(x, y)[part] * share + below));
    }
    return result;
  });
}

Picture result(const Picture &picture, bool opaque, CGFloat scale, CGFloat radius, UIColor *tint, CGFloat factor,
               UIImage *mask = nil) {
  UIImage *const image = blurred(support::imageOf(picture, scale, opaque), radius, tint, factor, mask);
  EXPECT_EQ([image scale], scale);
  EXPECT_EQ(CGImageGetBitmapInfo([image CGImage]), opaque ? 8198u : 8194u);
  return support::pictureOf(image);
}

TEST_F(EffectsPixels, areThreeBoxesOfAnOpaqueImage) {
  const Picture picture = support::noise(67, 45, true);
  EXPECT_EQ(result(picture, true, 1, 10, nil, 1), threeBoxes(picture, 9));
  EXPECT_EQ(result(picture, true, 1, 60, nil, 1), threeBoxes(picture, 57)); // larger than the image is high
}

TEST_F(EffectsPixels, areThreeBoxesOfAnImageWithAlpha) {
  const Picture picture = support::noise(45, 67, false);
  EXPECT_EQ(result(picture, false, 1, 10, nil, 1), threeBoxes(picture, 9));
}

TEST_F(EffectsPixels, areThreeBoxesOfThreeForHalfAPointAtTwoPixelsAPoint) {
  const Picture picture = support::noise(30, 20, true);
  EXPECT_EQ(result(picture, true, 2, 0.5, nil, 1), threeBoxes(picture, 3));
}

TEST_F(EffectsPixels, areBoxesOfThePixelRadiusAtEveryScale) {
  const Picture picture = support::noise(40, 31, true); // at 3 no whole number of points
  EXPECT_EQ(result(picture, true, 2, 10, nil, 1), threeBoxes(picture, 19));
  EXPECT_EQ(result(picture, true, 3, 10, nil, 1), threeBoxes(picture, 29)); // 28.45: 28, made odd
}

TEST_F(EffectsPixels, haveTheirColoursMultiplied) {
  const Picture opaque = support::noise(33, 21, true);
  EXPECT_EQ(result(opaque, true, 1, 0, nil, 1.8), recoloured(opaque, kMoreColour));
  const Picture clear = support::noise(33, 21, false);
  EXPECT_EQ(result(clear, false, 1, 0, nil, -1), recoloured(clear, kTurnedRound));
}

TEST_F(EffectsPixels, areBlurredFirstAndThenMultiplied) {
  const Picture picture = support::noise(50, 40, true);
  EXPECT_EQ(result(picture, true, 1, 20, nil, 1.8), recoloured(threeBoxes(picture, 19), kMoreColour));
}

TEST_F(EffectsPixels, areTheImageItselfUnderTheTintWithoutAnEffect) {
  const Picture picture = support::noise(20, 20, false);
  EXPECT_EQ(result(picture, false, 1, 0, nil, 1), picture);
  EXPECT_LE(distance(result(picture, false, 1, 0, [UIColor colorWithRed:0.2 green:0.4 blue:0.8 alpha:0.5], 1),
                     under(picture, 0.2, 0.4, 0.8, 0.5)),
            1);
}

TEST_F(EffectsPixels, haveTheTintOverTheEffect) {
  const Picture picture = support::noise(40, 30, true);
  const Picture expected = under(recoloured(threeBoxes(picture, 57), kMoreColour), 1, 1, 1, 0.3);
  UIImage *const look = [effects() imageByApplyingLightEffectToImage:support::imageOf(picture, 1, true)];
  EXPECT_LE(distance(support::pictureOf(look), expected), 1);
}

TEST_F(EffectsPixels, showTheEffectAsMuchAsTheMaskSaysAndTheImageElsewhere) {
  for (const bool opaque : {true, false}) {
    const Picture picture = support::noise(32, 24, opaque);
    const auto mask = [](size_t x, size_t) { return static_cast<std::uint8_t>(x < 8 ? 0 : x < 16 ? 255 : x * 8); };
    const Picture effect = threeBoxes(picture, 9);
    const Picture made = result(picture, opaque, 1, 10, nil, 1, support::grayImage(32, 24, mask));
    EXPECT_LE(distance(made, through(effect, picture, mask)), 1);
    for (size_t y = 0; y < 24; ++y) {
      EXPECT_EQ(made.at(3, y), picture.at(3, y)); // nothing let through
      if (opaque) EXPECT_EQ(made.at(12, y), effect.at(12, y));
    }
  }
}

TEST_F(EffectsPixels, areUnderTheWholeTintWhateverTheMask) {
  const Picture picture = support::noise(16, 16, true);
  UIImage *const nothing = support::grayImage(16, 16, [](size_t, size_t) { return 0; });
  EXPECT_LE(distance(result(picture, true, 1, 10, [UIColor colorWithRed:1 green:0 blue:0 alpha:0.5], 1, nothing),
                     under(picture, 1, 0, 0, 0.5)),
            1);
}

TEST_F(EffectsPixels, areThoseOfAMaskOfAnotherSizeLaidOverTheWholeImage) {
  const Picture picture = support::noise(40, 40, true);
  UIImage *const halves = support::grayImage(2, 1, [](size_t x, size_t) { return x == 0 ? 0 : 255; });
  const Picture made = result(picture, true, 1, 10, nil, 1, halves);
  const Picture effect = threeBoxes(picture, 9);
  for (size_t y = 0; y < 40; ++y) {
    EXPECT_EQ(made.at(2, y), picture.at(2, y));
    EXPECT_EQ(made.at(37, y), effect.at(37, y));
  }
  UIImage *const large = support::grayImage(400, 80, [](size_t x, size_t) { return x < 200 ? 255 : 0; }, 2);
  const Picture other = result(picture, true, 1, 10, nil, 1, large);
  EXPECT_EQ(other.at(5, 20), effect.at(5, 20));
  EXPECT_EQ(other.at(35, 20), picture.at(35, 20));
}

TEST_F(EffectsPixels, areTheImageForAMaskWithoutAnEffect) {
  const Picture picture = support::noise(10, 10, true);
  EXPECT_EQ(result(picture, true, 1, 0, nil, 1, support::grayImage(10, 10, [](size_t, size_t) { return 77; })),
            picture);
}

TEST_F(EffectsPixels, areThoseOfAnImageOfOnePixel) {
  const Picture one(1, 1, [](size_t, size_t) { return Pixel{10, 200, 30, 255}; });
  EXPECT_EQ(result(one, true, 1, 60, nil, 1.8), recoloured(one, kMoreColour));
}

TEST_F(EffectsPixels, areDefinedForTheLargestBoxThatThereIs) {
  const Picture even(9, 7, [](size_t, size_t) { return Pixel{10, 200, 30, 255}; });
  EXPECT_EQ(result(even, true, 1, kInfinity, nil, 1), even);
  EXPECT_EQ(result(even, true, 1, 1e9, nil, 1), even);
  EXPECT_THAT(log(), IsEmpty());
}

TEST_F(EffectsPixels, keepTheSizeInPointsAndTheOriginalAsItWas) {
  const Picture picture = support::noise(40, 31, false);
  UIImage *const image = support::imageOf(picture, 2);
  UIImage *const made = blurred(image, 5, [UIColor redColor], 1.8);
  EXPECT_NE(made, image);
  EXPECT_TRUE(CGSizeEqualToSize([made size], [image size]));
  EXPECT_EQ(support::pictureOf(image), picture);
}

} // namespace
