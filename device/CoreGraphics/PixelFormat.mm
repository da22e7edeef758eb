#include "CoreGraphics/PixelFormat.h"

#include <cstring>

namespace qvdevice {

namespace {

std::optional<PixelFormat> colorFormat(CGImageAlphaInfo alpha, bool little) {
  PixelFormat format{.size = 4, .red = 0, .green = 1, .blue = 2, .alpha = 3, .hasAlpha = true, .premultiplied = true};
  switch (alpha) {
  case kCGImageAlphaPremultipliedLast:
    break;
  case kCGImageAlphaLast:
    format.premultiplied = false;
    break;
  case kCGImageAlphaNoneSkipLast:
    format.hasAlpha = false;
    break;
  case kCGImageAlphaPremultipliedFirst:
  case kCGImageAlphaFirst:
  case kCGImageAlphaNoneSkipFirst:
    format = {.size = 4, .red = 1, .green = 2, .blue = 3, .alpha = 0, .hasAlpha = true, .premultiplied = true};
    format.premultiplied = alpha != kCGImageAlphaFirst;
    format.hasAlpha = alpha != kCGImageAlphaNoneSkipFirst;
    break;
  case kCGImageAlphaNone:
  case kCGImageAlphaOnly:
    return std::nullopt;
  }
  if (little) {
    for (std::uint8_t *const part : {&format.red, &format.green, &format.blue, &format.alpha}) {
      *part = 3 - *part;
    }
  }
  return format;
}

std::uint8_t times(unsigned part, unsigned alpha) { return static_cast<std::uint8_t>((part * alpha + 127) / 255); }

} // namespace

std::optional<PixelFormat> pixelFormat(size_t bitsPerComponent, size_t bitsPerPixel, CGColorSpaceModel model,
                                       CGBitmapInfo bitmapInfo) {
  const auto alpha = static_cast<CGImageAlphaInfo>(bitmapInfo & kCGBitmapAlphaInfoMask);
  const CGBitmapInfo order = bitmapInfo & kCGBitmapByteOrderMask;
  if (bitsPerComponent != 8 || (bitmapInfo & ~(kCGBitmapAlphaInfoMask | kCGBitmapByteOrderMask)) != 0) {
    return std::nullopt;
  }
  if (bitsPerPixel == 8 && order == kCGBitmapByteOrderDefault) {
    if (alpha == kCGImageAlphaOnly) {
      return PixelFormat{
          .size = 1, .red = 0, .green = 0, .blue = 0, .alpha = 0, .hasAlpha = true, .premultiplied = true};
    }
    if (alpha == kCGImageAlphaNone && model == kCGColorSpaceModelMonochrome) {
      return PixelFormat{
          .size = 1, .red = 0, .green = 0, .blue = 0, .alpha = 0, .hasAlpha = false, .premultiplied = false};
    }
  }
  if (model != kCGColorSpaceModelRGB) return std::nullopt;
  if (bitsPerPixel == 24 && order == kCGBitmapByteOrderDefault && alpha == kCGImageAlphaNone) {
    return PixelFormat{
        .size = 3, .red = 0, .green = 1, .blue = 2, .alpha = 0, .hasAlpha = false, .premultiplied = false};
  }
  const bool little = order == kCGBitmapByteOrder32Little;
  if (bitsPerPixel != 32 || (!little && order != kCGBitmapByteOrderDefault && order != kCGBitmapByteOrder32Big)) {
    return std::nullopt;
  }
  return colorFormat(alpha, little);
}

void rowToCairo(const std::uint8_t *from, std::uint8_t *to, size_t width, const PixelFormat &format) {
  if (format.size == 1 && format.hasAlpha) { // alpha alone: black
    for (size_t x = 0; x < width; ++x, to += 4) {
      to[0] = to[1] = to[2] = 0;
      to[3] = from[x];
    }
    return;
  }
  if (format.isCairos() && format.hasAlpha) {
    std::memcpy(to, from, width * 4);
    return;
  }
  for (size_t x = 0; x < width; ++x, from += format.size, to += 4) {
    const unsigned alpha = format.hasAlpha ? from[format.alpha] : 255U;
    const bool multiply = format.hasAlpha && !format.premultiplied;
    to[0] = multiply ? times(from[format.blue], alpha) : from[format.blue];
    to[1] = multiply ? times(from[format.green], alpha) : from[format.green];
    to[2] = multiply ? times(from[format.red], alpha) : from[format.red];
    to[3] = static_cast<std::uint8_t>(alpha);
  }
}

} // namespace qvdevice
