// UIKit's stack of contexts.
#import "Graphics.h"

#include <cmath>
#include <thread>

using support::Picture;
using support::Pixel;

namespace {

constexpr Pixel kRed{0, 0, 255, 255};

class ImageContext : public Graphics {
protected:
  void TearDown() override {
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    Graphics::TearDown();
  }
};

TEST_F(ImageContext, hasItsOriginInTheUpperLeftCornerAndPointsOfSeveralPixels) {
  UIGraphicsBeginImageContextWithOptions(CGSizeMake(2, 1), NO, 2);
  [[UIColor redColor] set];
  UIRectFill(CGRectMake(0, 0, 0.5, 0.5));
  UIImage *const image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  const Picture picture = support::pictureOf(image);
  ASSERT_EQ(picture.width, 4u);
  ASSERT_EQ(picture.height, 2u);
  EXPECT_EQ(picture.at(0, 0), kRed);
  EXPECT_EQ(picture.at(1, 0), (Pixel{}));
  EXPECT_EQ(picture.at(0, 1), (Pixel{}));
  EXPECT_EQ([image scale], 2);
  EXPECT_TRUE(CGSizeEqualToSize([image size], CGSizeMake(2, 1)));
}

TEST_F(ImageContext, thatIsOpaqueIsBlackAtFirstAndSkipsAlpha) {
  UIGraphicsBeginImageContextWithOptions(CGSizeMake(1, 1), YES, 1);
  UIImage *const image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  EXPECT_EQ(CGImageGetBitmapInfo([image CGImage]), 8198u);
  EXPECT_EQ(support::pictureOf(image).at(0, 0), (Pixel{0, 0, 0, 255}));
}

TEST_F(ImageContext, ofPartsOfPixelsHasTheWholeOnes) {
  const auto pixels = [](CGFloat points, CGFloat scale) {
    UIGraphicsBeginImageContextWithOptions(CGSizeMake(points, 1), NO, scale);
    const size_t width = CGImageGetWidth([UIGraphicsGetImageFromCurrentImageContext() CGImage]);
    UIGraphicsEndImageContext();
    return width;
  };
  EXPECT_EQ(pixels(1.25, 2), 3u);
  EXPECT_EQ(pixels(1334.0 / 3, 3), 1334u);
  EXPECT_EQ(pixels(1, 0), 3u); // a phone's screen has three in a point
}

TEST_F(ImageContext, givesAPictureOfWhatHasBeenDrawnSoFar) {
  UIGraphicsBeginImageContext(CGSizeMake(1, 1));
  UIImage *const before = UIGraphicsGetImageFromCurrentImageContext();
  [[UIColor redColor] set];
  UIRectFill(CGRectMake(0, 0, 1, 1));
  UIImage *const after = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  EXPECT_EQ(support::pictureOf(before).at(0, 0), (Pixel{}));
  EXPECT_EQ(support::pictureOf(after).at(0, 0), kRed);
}

TEST_F(ImageContext, withoutPixelsIsNullAndStillHidesTheOneBelow) {
  UIGraphicsBeginImageContext(CGSizeMake(1, 1));
  CGContextRef below = UIGraphicsGetCurrentContext();
  for (const CGFloat side : {0.0, -1.0, static_cast<double>(NAN), static_cast<double>(INFINITY), 1e9}) {
    UIGraphicsBeginImageContextWithOptions(CGSizeMake(side, 1), NO, 1);
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nil);
    UIGraphicsEndImageContext();
    EXPECT_EQ(UIGraphicsGetCurrentContext(), below);
  }
  UIGraphicsEndImageContext();
}

TEST_F(ImageContext, isOneOfItsThreadsOwnStack) {
  UIGraphicsBeginImageContext(CGSizeMake(1, 1));
  std::thread([] {
    EXPECT_EQ(UIGraphicsGetCurrentContext(), nullptr);
    UIGraphicsBeginImageContext(CGSizeMake(1, 1)); // never ended: goes with the thread
  }).join();
  EXPECT_NE(UIGraphicsGetCurrentContext(), nullptr);
  UIGraphicsEndImageContext();
}

TEST_F(ImageContext, thatWasPushedIsNotEndedLikeAnImage) {
  CGContextRef own = graphics::context(1, 1);
  UIGraphicsPushContext(own);
  UIGraphicsEndImageContext();
  EXPECT_EQ(UIGraphicsGetCurrentContext(), own);
  EXPECT_EQ(UIGraphicsGetImageFromCurrentImageContext(), nil);
  UIGraphicsPopContext();
  UIGraphicsPopContext();
  UIGraphicsEndImageContext();
}

} // namespace
