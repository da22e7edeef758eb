// The layouts of a pixel that images of this device may have.
#pragma once

#import <CoreGraphics/CGImage.h>

#include <cstdint>
#include <optional>

namespace qvdevice {

/// Where a pixel's parts lie, in bytes from its start. Cairo's own layout has blue, green, red, alpha, premultiplied.
struct PixelFormat {
  std::uint8_t size;
  std::uint8_t red, green, blue;
  /// Of no meaning when there is no alpha.
  std::uint8_t alpha;
  bool hasAlpha;
  bool premultiplied;

  /// Whether Cairo can draw it as it lies in memory.
  bool isCairos() const { return size == 4 && blue == 0 && green == 1 && red == 2 && (!hasAlpha || premultiplied); }
};

/// Nothing for what this device does not know.
std::optional<PixelFormat> pixelFormat(size_t bitsPerComponent, size_t bitsPerPixel, CGColorSpaceModel model,
                                       CGBitmapInfo bitmapInfo);

/// Translates one row into Cairo's layout. Colours are multiplied by alpha to the nearest of 255, halves up.
void rowToCairo(const std::uint8_t* from, std::uint8_t* to, size_t width, const PixelFormat& format);

} // namespace qvdevice
