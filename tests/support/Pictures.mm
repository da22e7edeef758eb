#import "Pictures.h"

#include <algorithm>
#include <cstdlib>

namespace support {

Picture::Picture(size_t columns, size_t rows, const std::function<Pixel(size_t x, size_t y)> &draw)
    : Picture(columns, rows) {
  for (size_t y = 0; y < height; ++y) {
    for (size_t x = 0; x < width; ++x) {
      at(x, y) = draw(x, y);
    }
  }
}

Picture noise(size_t width, size_t height, bool opaque, unsigned seed) {
  std::uint32_t state = seed * 2654435761U + 1;
  const auto next = [&state] {
    state = state * 1664525U + 1013904223U;
    return state >> 24;
  };
  return Picture(width, height, [&](size_t, size_t) {
    const std::uint32_t alpha = opaque ? 255 : next();
    const auto part = [&] { return static_cast<std::uint8_t>(next() * alpha / 255); };
    return Pixel{part(), part(), part(), static_cast<std::uint8_t>(alpha)};
  });
}

static UIImage *imageWithData(NSData *data, size_t width, size_t height, size_t bytes, bool gray, CGBitmapInfo info,
                              CGFloat scale) {
  CGDataProviderRef provider = CGDataProviderCreateWithCFData((CFDataRef)data);
  CGColorSpaceRef space = gray ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB();
  CGImageRef bitmap = CGImageCreate(width, height, 8, bytes * 8, width * bytes, space, info, provider, nullptr, false,
                                    kCGRenderingIntentDefault);
  UIImage *const image = [UIImage imageWithCGImage:bitmap scale:scale orientation:UIImageOrientationUp];
  CGImageRelease(bitmap);
  CGColorSpaceRelease(space);
  CGDataProviderRelease(provider);
  return image;
}

UIImage *imageOf(const Picture &picture, CGFloat scale, bool opaque) {
  NSData *const data = [NSData dataWithBytes:picture.pixels.data() length:picture.pixels.size() * sizeof(Pixel)];
  return imageWithData(data, picture.width, picture.height, 4, false, opaque ? 8198 : 8194, scale);
}

UIImage *grayImage(size_t width, size_t height, const std::function<std::uint8_t(size_t x, size_t y)> &draw,
                   CGFloat scale) {
  NSMutableData *const data = [NSMutableData dataWithLength:width * height];
  auto *to = static_cast<std::uint8_t *>([data mutableBytes]);
  for (size_t y = 0; y < height; ++y) {
    for (size_t x = 0; x < width; ++x) {
      *to++ = draw(x, y);
    }
  }
  return imageWithData(data, width, height, 1, true, 0, scale);
}

Picture pictureOf(UIImage *image) {
  CGImageRef bitmap = [image CGImage];
  const CGBitmapInfo info = CGImageGetBitmapInfo(bitmap);
  if (bitmap == nullptr || CGImageGetBitsPerPixel(bitmap) != 32 || (info != 8194 && info != 8198)) return {};
  NSData *const data = [(NSData *)CGDataProviderCopyData(CGImageGetDataProvider(bitmap)) autorelease];
  const auto *const bytes = static_cast<const std::uint8_t *>([data bytes]);
  const size_t stride = CGImageGetBytesPerRow(bitmap);
  return Picture(CGImageGetWidth(bitmap), CGImageGetHeight(bitmap), [&](size_t x, size_t y) {
    const std::uint8_t *const from = bytes + y * stride + x * 4;
    return Pixel{from[0], from[1], from[2], info == 8198 ? std::uint8_t{255} : from[3]};
  });
}

int distance(const Picture &left, const Picture &right) {
  if (left.width != right.width || left.height != right.height) return 256;
  int largest = 0;
  for (size_t index = 0; index < left.pixels.size(); ++index) {
    for (size_t part = 0; part < 4; ++part) {
      largest = std::max(largest, std::abs(left.pixels[index][part] - right.pixels[index][part]));
    }
  }
  return largest;
}

} // namespace support
