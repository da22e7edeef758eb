// Whether the result has alpha, by what the image says of its own.
#import "Effects.h"

namespace {

struct Layout {
  const char *name;
  CGBitmapInfo info;
  size_t bytes; // a pixel
};

void PrintTo(const Layout &layout, std::ostream *out) { *out << layout.name; }

/// All bytes are 255: opaque white in every layout.
UIImage *white(const Layout &layout) {
  constexpr size_t kWidth = 6;
  constexpr size_t kHeight = 4;
  NSMutableData *const data = [NSMutableData dataWithLength:kWidth * kHeight * layout.bytes];
  memset([data mutableBytes], 255, [data length]);
  CGDataProviderRef provider = CGDataProviderCreateWithCFData((CFDataRef)data);
  CGColorSpaceRef space = layout.bytes == 1 ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB();
  CGImageRef bitmap = CGImageCreate(kWidth, kHeight, 8, layout.bytes * 8, kWidth * layout.bytes, space, layout.info,
                                    provider, nullptr, false, kCGRenderingIntentDefault);
  UIImage *const image = [UIImage imageWithCGImage:bitmap];
  CGImageRelease(bitmap);
  CGColorSpaceRelease(space);
  CGDataProviderRelease(provider);
  return image;
}

/// The bitmap info of the image without an effect, blurred, and with its colours changed.
std::vector<CGBitmapInfo> results(const Layout &layout) {
  UIImage *const image = white(layout);
  EXPECT_EQ(CGImageGetBitmapInfo([image CGImage]), layout.info);
  std::vector<CGBitmapInfo> infos;
  for (UIImage *const made : {blurred(image, 0, nil, 1), blurred(image, 10, nil, 1), blurred(image, 0, nil, 1.8)}) {
    EXPECT_NE(made, nil);
    infos.push_back(CGImageGetBitmapInfo([made CGImage]));
  }
  return infos;
}

std::string nameOf(const testing::TestParamInfo<Layout> &layout) { return layout.param.name; }

class EffectsWithoutAlpha : public Effects, public testing::WithParamInterface<Layout> {};

TEST_P(EffectsWithoutAlpha, areOpaqueForEachKindOfImageWithoutAlpha) {
  EXPECT_THAT(results(GetParam()), testing::Each(8198u)); // the first byte is skipped
}

INSTANTIATE_TEST_SUITE_P(Kinds, EffectsWithoutAlpha,
                         testing::Values(Layout{"noneInGrey", 0, 1}, Layout{"noneInColour", 0, 3},
                                         Layout{"lastSkipped", 5, 4}, Layout{"firstSkipped", 6, 4},
                                         Layout{"firstSkippedInReverse", 8192 | 6, 4}),
                         nameOf);

class EffectsWithAlpha : public Effects, public testing::WithParamInterface<Layout> {};

TEST_P(EffectsWithAlpha, haveAlphaForEachKindOfImageThatHas) {
  EXPECT_THAT(results(GetParam()), testing::Each(8194u)); // premultiplied, in the first byte
}

INSTANTIATE_TEST_SUITE_P(Kinds, EffectsWithAlpha,
                         testing::Values(Layout{"premultipliedLast", 1, 4}, Layout{"premultipliedFirst", 2, 4},
                                         Layout{"last", 3, 4}, Layout{"first", 4, 4},
                                         Layout{"firstInReverse", 8192 | 4, 4}),
                         nameOf);

} // namespace
