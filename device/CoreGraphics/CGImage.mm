#import <CoreGraphics/CGImage.h>

#import "CoreGraphics/DataProviders.h"
#import "CoreGraphics/Diagnostics.h"
#import "CoreGraphics/Images.h"

#include <algorithm>
#include <limits>

@interface QVCGImage : NSObject {
@public
  size_t _width, _height, _bytesPerRow;
  CGColorSpaceRef _space;
  CGBitmapInfo _bitmapInfo;
  CGDataProviderRef _provider;
  qvdevice::PixelFormat _format;
  bool _mask;
}
@end

@implementation QVCGImage

- (void)dealloc {
  CGColorSpaceRelease(_space);
  CGDataProviderRelease(_provider);
  [super dealloc];
}

@end

static QVCGImage *objectOf(CGImageRef image) { return (QVCGImage *)image; }

/// Why the data cannot be an image of that form; null when it can.
static const char *faultIn(size_t width, size_t height, size_t pixelSize, size_t bytesPerRow,
                           CGDataProviderRef provider) {
  if (width == 0 || height == 0) return "an image has at least one pixel";
  if (provider == nullptr) return "there is no data provider";
  if (width > std::numeric_limits<size_t>::max() / pixelSize || bytesPerRow < width * pixelSize) {
    return "the rows are too short";
  }
  // The last row may end with its last pixel.
  const size_t size = QVDataProviderSize(provider);
  if (size < width * pixelSize || (size - width * pixelSize) / bytesPerRow < height - 1) return "the data is too short";
  return nullptr;
}

static CGImageRef createImage(const char *function, size_t width, size_t height, size_t bytesPerRow,
                              std::optional<qvdevice::PixelFormat> format, CGDataProviderRef provider,
                              const CGFloat *decode) {
  const char *const fault = !format             ? "this device does not know the format"
                            : decode != nullptr ? "this device does not map components"
                                                : faultIn(width, height, format->size, bytesPerRow, provider);
  if (fault) {
    QVSayWhy(function, fault);
    return nullptr;
  }
  QVCGImage *const image = [[QVCGImage alloc] init];
  image->_width = width;
  image->_height = height;
  image->_bytesPerRow = bytesPerRow;
  image->_format = *format;
  image->_provider = CGDataProviderRetain(provider);
  return (CGImageRef)image;
}

CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel, size_t bytesPerRow,
                         CGColorSpaceRef space, CGBitmapInfo bitmapInfo, CGDataProviderRef provider,
                         const CGFloat *decode, bool, CGColorRenderingIntent) {
  CGImageRef image = createImage(
      __func__, width, height, bytesPerRow,
      qvdevice::pixelFormat(bitsPerComponent, bitsPerPixel, CGColorSpaceGetModel(space), bitmapInfo), provider, decode);
  if (image) {
    objectOf(image)->_space = CGColorSpaceRetain(space);
    objectOf(image)->_bitmapInfo = bitmapInfo;
  }
  return image;
}

CGImageRef CGImageMaskCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                             size_t bytesPerRow, CGDataProviderRef provider, const CGFloat *decode, bool) {
  const auto format = qvdevice::pixelFormat(bitsPerComponent, bitsPerPixel, kCGColorSpaceModelMonochrome, 0);
  CGImageRef image = createImage(__func__, width, height, bytesPerRow, format, provider, decode);
  if (image) objectOf(image)->_mask = true;
  return image;
}

CGImageRef CGImageRetain(CGImageRef image) { return (CGImageRef)[objectOf(image) retain]; }

void CGImageRelease(CGImageRef image) { [objectOf(image) release]; }

bool CGImageIsMask(CGImageRef image) { return image && objectOf(image)->_mask; }

size_t CGImageGetWidth(CGImageRef image) { return image ? objectOf(image)->_width : 0; }

size_t CGImageGetHeight(CGImageRef image) { return image ? objectOf(image)->_height : 0; }

size_t CGImageGetBitsPerComponent(CGImageRef image) { return image ? 8 : 0; }

size_t CGImageGetBitsPerPixel(CGImageRef image) { return image ? objectOf(image)->_format.size * size_t{8} : 0; }

size_t CGImageGetBytesPerRow(CGImageRef image) { return image ? objectOf(image)->_bytesPerRow : 0; }

CGColorSpaceRef CGImageGetColorSpace(CGImageRef image) { return image ? objectOf(image)->_space : nullptr; }

CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image) {
  return static_cast<CGImageAlphaInfo>(CGImageGetBitmapInfo(image) & kCGBitmapAlphaInfoMask);
}

CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image) { return image ? objectOf(image)->_bitmapInfo : 0; }

CGDataProviderRef CGImageGetDataProvider(CGImageRef image) { return image ? objectOf(image)->_provider : nullptr; }

namespace qvdevice {

const PixelFormat &formatOf(CGImageRef image) { return objectOf(image)->_format; }

const std::uint8_t *rowOf(CGImageRef image, size_t y) {
  const QVCGImage *const object = objectOf(image);
  return static_cast<const std::uint8_t *>(QVDataProviderBytes(object->_provider)) + y * object->_bytesPerRow;
}

void rowToCoverage(CGImageRef image, size_t y, std::uint8_t *to) {
  const size_t width = CGImageGetWidth(image);
  const PixelFormat &format = formatOf(image);
  const std::uint8_t *from = rowOf(image, y);
  if (CGImageIsMask(image)) {
    std::transform(from, from + width, to, [](std::uint8_t covered) { return 255 - covered; });
  } else if (format.size == 1) {
    std::copy_n(from, width, to);
  } else if (!format.hasAlpha) {
    std::fill_n(to, width, std::uint8_t{255});
  } else {
    for (size_t x = 0; x < width; ++x) {
      to[x] = from[x * format.size + format.alpha];
    }
  }
}

} // namespace qvdevice
