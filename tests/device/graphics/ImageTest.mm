#import "Graphics.h"

#include <cmath>

using support::Picture;
using support::Pixel;

namespace {

class Image : public Graphics {};

CGImageRef bitmap(size_t width, size_t height) {
  return [support::imageOf(support::noise(width, height, true)) CGImage];
}

TEST_F(Image, isAsLargeAsItsPixelsByItsScale) {
  UIImage *const image = [UIImage imageWithCGImage:bitmap(6, 4) scale:2 orientation:UIImageOrientationUp];
  EXPECT_TRUE(CGSizeEqualToSize([image size], CGSizeMake(3, 2)));
  EXPECT_EQ([image scale], 2);
  EXPECT_EQ([[UIImage imageWithCGImage:bitmap(6, 4)] scale], 1);
}

TEST_F(Image, thatLiesOnItsSideIsAsWideAsItsBitmapIsHigh) {
  UIImage *const image = [UIImage imageWithCGImage:bitmap(6, 4) scale:1 orientation:UIImageOrientationRight];
  EXPECT_TRUE(CGSizeEqualToSize([image size], CGSizeMake(4, 6)));
}

TEST_F(Image, ofAScaleThatIsNoneHasOne) {
  for (const CGFloat scale : {0.0, -2.0, static_cast<double>(NAN), static_cast<double>(INFINITY)}) {
    EXPECT_EQ([[UIImage imageWithCGImage:bitmap(1, 1) scale:scale orientation:UIImageOrientationUp] scale], 1);
  }
}

TEST_F(Image, madeOfNothingHasNoBitmapAndNoSize) {
  EXPECT_EQ([UIImage imageWithCGImage:nullptr], nil);
  EXPECT_EQ([UIImage imageWithData:nil], nil);
  EXPECT_EQ([UIImage imageWithContentsOfFile:@"nowhere.png"], nil);
  UIImage *const empty = [[[UIImage alloc] init] autorelease];
  EXPECT_EQ([empty CGImage], nullptr);
  EXPECT_TRUE(CGSizeEqualToSize([empty size], CGSizeZero));
  EXPECT_EQ(UIImagePNGRepresentation(empty), nil);
  EXPECT_EQ(UIImagePNGRepresentation(nil), nil);
}

/// 1 2      What a bitmap of these pixels looks like, row by row, when it is drawn upright.
/// 3 4
/// 5 6
std::string upright(UIImageOrientation orientation) {
  const Picture picture(2, 3,
                        [](size_t x, size_t y) { return Pixel{0, 0, static_cast<std::uint8_t>(1 + x + 2 * y), 255}; });
  UIImage *const image = [UIImage imageWithCGImage:[support::imageOf(picture) CGImage] scale:1 orientation:orientation];
  UIGraphicsBeginImageContext([image size]);
  [image drawAtPoint:CGPointZero];
  const Picture drawn = support::pictureOf(UIGraphicsGetImageFromCurrentImageContext());
  UIGraphicsEndImageContext();
  std::string text;
  for (size_t y = 0; y < drawn.height; ++y) {
    for (size_t x = 0; x < drawn.width; ++x) {
      text += static_cast<char>('0' + drawn.at(x, y)[2]);
    }
    text += '/';
  }
  return text;
}

TEST_F(Image, isDrawnUprightInEveryOrientation) {
  EXPECT_EQ(upright(UIImageOrientationUp), "12/34/56/");
  EXPECT_EQ(upright(UIImageOrientationDown), "65/43/21/");
  EXPECT_EQ(upright(UIImageOrientationLeft), "246/135/");
  EXPECT_EQ(upright(UIImageOrientationRight), "531/642/");
  EXPECT_EQ(upright(UIImageOrientationUpMirrored), "21/43/65/");
  EXPECT_EQ(upright(UIImageOrientationDownMirrored), "56/34/12/");
  EXPECT_EQ(upright(UIImageOrientationLeftMirrored), "135/246/");
  EXPECT_EQ(upright(UIImageOrientationRightMirrored), "642/531/");
}

} // namespace
