// CGImage and what it is made of.
#import "Graphics.h"

#include <vector>

using namespace graphics;
using support::Picture;
using support::Pixel;

namespace {

class Bitmap : public Graphics {};

struct Released {
  int times = 0;
  const void *data = nullptr;
  size_t size = 0;
};

void note(void *info, const void *data, size_t size) {
  auto *const released = static_cast<Released *>(info);
  ++released->times;
  released->data = data;
  released->size = size;
}

CGImageRef create(const std::vector<std::uint8_t> &bytes, size_t width, size_t height, size_t bits, size_t row,
                  CGColorSpaceRef space, CGBitmapInfo info) {
  CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, bytes.data(), bytes.size(), nullptr);
  CGImageRef image =
      CGImageCreate(width, height, 8, bits, row, space, info, provider, nullptr, false, kCGRenderingIntentDefault);
  CGDataProviderRelease(provider);
  return (CGImageRef)[(id)image autorelease];
}

/// What one pixel of the format looks like once it is drawn.
Pixel shown(const std::vector<std::uint8_t> &bytes, size_t bits, CGColorSpaceRef space, CGBitmapInfo info) {
  CGContextRef target = context(1, 1);
  CGContextDrawImage(target, CGRectMake(0, 0, 1, 1), create(bytes, 1, 1, bits, bytes.size(), space, info));
  return drawn(target).at(0, 0);
}

TEST_F(Bitmap, releasesItsDataOnceAndOnlyWhenNobodyNeedsItAnyLonger) {
  Released released;
  const std::vector<std::uint8_t> bytes(16);
  CGDataProviderRef provider = CGDataProviderCreateWithData(&released, bytes.data(), bytes.size(), &note);
  CGImageRef image = CGImageCreate(2, 2, 8, 32, 8, rgb(), 8194, provider, nullptr, false, kCGRenderingIntentDefault);
  CGDataProviderRelease(provider);
  CGImageRetain(image);
  CGImageRelease(image);
  EXPECT_EQ(released.times, 0);
  CGImageRelease(image);
  EXPECT_EQ(released.times, 1);
  EXPECT_EQ(released.data, bytes.data());
  EXPECT_EQ(released.size, 16u);
}

TEST_F(Bitmap, showsEveryLayoutThatItKnowsAsTheSamePixel) {
  const Pixel half{50, 100, 25, 128};                          // blue, green, red, alpha; multiplied
  EXPECT_EQ(shown({50, 100, 25, 128}, 32, rgb(), 8194), half); // premultiplied first, little
  EXPECT_EQ(shown({128, 25, 100, 50}, 32, rgb(), 2), half);    // premultiplied first
  EXPECT_EQ(shown({25, 100, 50, 128}, 32, rgb(), 1), half);    // premultiplied last
  EXPECT_EQ(shown({25, 100, 50, 128}, 32, rgb(), 1 | 4 << 12), half);
  EXPECT_EQ(shown({128, 50, 100, 25}, 32, rgb(), 1 | 2 << 12), half);
  // Not multiplied: 51 * 128 / 255 is 25.6, 100 * 128 / 255 is 50.2, 200 * 128 / 255 is 100.4.
  const Pixel multiplied{50, 100, 26, 128};
  EXPECT_EQ(shown({51, 200, 100, 128}, 32, rgb(), 3), multiplied);           // last
  EXPECT_EQ(shown({128, 51, 200, 100}, 32, rgb(), 4), multiplied);           // first
  EXPECT_EQ(shown({100, 200, 51, 128}, 32, rgb(), 4 | 2 << 12), multiplied); // first, little
  const Pixel opaque{3, 2, 1, 255};
  EXPECT_EQ(shown({1, 2, 3, 9}, 32, rgb(), 5), opaque);           // skip last
  EXPECT_EQ(shown({9, 1, 2, 3}, 32, rgb(), 6), opaque);           // skip first
  EXPECT_EQ(shown({3, 2, 1, 9}, 32, rgb(), 6 | 2 << 12), opaque); // skip first, little
  EXPECT_EQ(shown({1, 2, 3}, 24, rgb(), 0), opaque);
  EXPECT_EQ(shown({7}, 8, gray(), 0), (Pixel{7, 7, 7, 255}));
  EXPECT_EQ(shown({7}, 8, nullptr, 7), (Pixel{0, 0, 0, 7})); // alpha alone
}

TEST_F(Bitmap, ofALayoutThatIsNotKnownIsNone) {
  const std::vector<std::uint8_t> bytes(64);
  EXPECT_EQ(create(bytes, 1, 1, 32, 4, rgb(), 0), nullptr);      // 32 bits without alpha
  EXPECT_EQ(create(bytes, 1, 1, 32, 4, gray(), 8194), nullptr);  // grey in 32 bits
  EXPECT_EQ(create(bytes, 1, 1, 32, 4, nullptr, 8194), nullptr); // no colour space
  EXPECT_EQ(create(bytes, 1, 1, 64, 8, rgb(), 1), nullptr);
  EXPECT_EQ(create(bytes, 1, 1, 32, 4, rgb(), 1 | 1 << 8), nullptr);  // floating point
  EXPECT_EQ(create(bytes, 1, 1, 32, 4, rgb(), 1 | 1 << 12), nullptr); // 16-bit little
  EXPECT_EQ(create(bytes, 1, 1, 24, 3, rgb(), 8192), nullptr);
  EXPECT_EQ(create(bytes, 1, 1, 8, 1, rgb(), 0), nullptr);
}

TEST_F(Bitmap, withoutPixelsOrWithTooLittleDataIsNone) {
  const std::vector<std::uint8_t> bytes(24);
  EXPECT_EQ(create(bytes, 0, 1, 32, 8, rgb(), 8194), nullptr);
  EXPECT_EQ(create(bytes, 1, 0, 32, 8, rgb(), 8194), nullptr);
  EXPECT_EQ(create(bytes, 2, 3, 32, 7, rgb(), 8194), nullptr);
  EXPECT_EQ(create(bytes, 2, 4, 32, 8, rgb(), 8194), nullptr);
  EXPECT_NE(create(bytes, 2, 3, 32, 8, rgb(), 8194), nullptr);
  EXPECT_NE(create(bytes, 1, 3, 32, 10, rgb(), 8194), nullptr); // the last row ends with its pixel
  EXPECT_EQ(create(bytes, 1, 3, 32, 11, rgb(), 8194), nullptr);
  EXPECT_EQ(create(bytes, SIZE_MAX / 2, 2, 32, 16, rgb(), 8194), nullptr);
  EXPECT_EQ(create(bytes, 1, SIZE_MAX, 32, 8, rgb(), 8194), nullptr);
  EXPECT_EQ(CGImageCreate(1, 1, 8, 32, 4, rgb(), 8194, nullptr, nullptr, false, kCGRenderingIntentDefault), nullptr);
  EXPECT_EQ(CGDataProviderCreateWithData(nullptr, nullptr, 4, nullptr), nullptr);
  EXPECT_EQ(CGDataProviderCreateWithCFData((CFDataRef)[NSData data]), nullptr);
}

TEST_F(Bitmap, tellsWhatItIs) {
  const std::vector<std::uint8_t> bytes(100);
  CGImageRef image = create(bytes, 3, 5, 32, 16, rgb(), 8194);
  EXPECT_EQ(CGImageGetWidth(image), 3u);
  EXPECT_EQ(CGImageGetHeight(image), 5u);
  EXPECT_EQ(CGImageGetBitsPerComponent(image), 8u);
  EXPECT_EQ(CGImageGetBitsPerPixel(image), 32u);
  EXPECT_EQ(CGImageGetBytesPerRow(image), 16u);
  EXPECT_EQ(CGImageGetBitmapInfo(image), 8194u);
  EXPECT_EQ(CGImageGetAlphaInfo(image), kCGImageAlphaPremultipliedFirst);
  EXPECT_EQ(CGColorSpaceGetModel(CGImageGetColorSpace(image)), kCGColorSpaceModelRGB);
  EXPECT_FALSE(CGImageIsMask(image));
}

TEST_F(Bitmap, thatIsNullAnswersNothing) {
  EXPECT_EQ(CGImageRetain(nullptr), nullptr);
  CGImageRelease(nullptr);
  EXPECT_EQ(CGImageGetWidth(nullptr), 0u);
  EXPECT_EQ(CGImageGetBitmapInfo(nullptr), 0u);
  EXPECT_EQ(CGImageGetDataProvider(nullptr), nullptr);
  EXPECT_EQ(CGDataProviderCopyData(nullptr), nullptr);
}

} // namespace
