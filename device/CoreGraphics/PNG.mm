#include "CoreGraphics/PNG.h"

#include "CoreGraphics/Diagnostics.h"
#include "CoreGraphics/Images.h"

#include <png.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>

using qvdevice::PixelFormat;

namespace {

struct Free {
  void operator()(std::uint8_t *memory) const { std::free(memory); }
};
using Bytes = std::unique_ptr<std::uint8_t, Free>;

/// libpng's work on one image, given back whatever happens.
struct Work {
  png_image image{};
  Work() { image.version = PNG_IMAGE_VERSION; }
  ~Work() { png_image_free(&image); }
  Work(const Work &) = delete;
  Work &operator=(const Work &) = delete;

  std::nullptr_t fails() const {
    QVSayWhy("PNG", image.message);
    return nullptr;
  }
};

void freeData(void *, const void *data, size_t) { std::free(const_cast<void *>(data)); }

/// Whether a file of that length can hold so many pixels. Of a pixel it has one bit at least, and what is deflated
/// grows to 1032 times its length at most. A file that claims more is broken, and would cost memory before that is
/// noticed.
bool canHold(size_t length, const png_image &image) {
  return std::uint64_t{image.width} * image.height / 8 / 1032 <= length; // no product of 32 bits is too large
}

CGImageRef createImage(Bytes pixels, size_t size, const png_image &read) {
  const bool gray = read.format == PNG_FORMAT_GRAY;
  const auto alpha = (read.format & PNG_FORMAT_FLAG_ALPHA) != 0 ? kCGImageAlphaLast : kCGImageAlphaNoneSkipLast;
  const CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, pixels.release(), size, &freeData);
  const CGColorSpaceRef space = gray ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB();
  const CGImageRef image = CGImageCreate(read.width, read.height, 8, gray ? 8 : 32, size / read.height, space,
                                         static_cast<CGBitmapInfo>(gray ? kCGImageAlphaNone : alpha), provider, nullptr,
                                         true, kCGRenderingIntentDefault);
  CGColorSpaceRelease(space);
  CGDataProviderRelease(provider);
  return image;
}

/// What has been multiplied by alpha, divided by it.
std::uint8_t divided(unsigned part, unsigned alpha) {
  return alpha == 0 ? 0 : static_cast<std::uint8_t>(std::min((part * 255 + alpha / 2) / alpha, 255U));
}

/// Red, green, blue and, where the image has it, alpha.
void rowToPNG(CGImageRef image, size_t y, std::uint8_t *to) {
  const PixelFormat &format = qvdevice::formatOf(image);
  const std::uint8_t *from = qvdevice::rowOf(image, y);
  for (size_t x = 0; x < CGImageGetWidth(image); ++x, from += format.size) {
    const unsigned alpha = format.hasAlpha ? from[format.alpha] : 255U;
    for (const std::uint8_t part : {format.red, format.green, format.blue}) {
      *to++ = format.hasAlpha && format.premultiplied ? divided(from[part], alpha) : from[part];
    }
    if (format.hasAlpha) *to++ = static_cast<std::uint8_t>(alpha);
  }
}

} // namespace

CGImageRef QVImageCreateWithPNG(NSData *data) {
  Work work;
  if (!png_image_begin_read_from_memory(&work.image, [data bytes], [data length])) return work.fails();
  if (!canHold([data length], work.image)) {
    QVSayWhy("PNG", "the file is too short for the size that it claims");
    return nullptr;
  }
  const bool alpha = (work.image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
  const bool color = (work.image.format & (PNG_FORMAT_FLAG_COLOR | PNG_FORMAT_FLAG_COLORMAP)) != 0;
  // Red, green and blue with a fourth byte, which is 255 where there is no alpha; a mask is grey.
  const png_uint_32 native = alpha || color ? PNG_FORMAT_RGBA : PNG_FORMAT_GRAY;
  work.image.format = native;
  const size_t stride = size_t{work.image.width} * PNG_IMAGE_PIXEL_CHANNELS(native);
  const size_t size = stride * work.image.height; // canHold: below 2^16 times the file's length
  Bytes pixels(static_cast<std::uint8_t *>(std::malloc(size)));
  if (!pixels) {
    QVSayWhy("PNG", "there is no memory for the image");
    return nullptr;
  }
  if (!png_image_finish_read(&work.image, nullptr, pixels.get(), 0, nullptr)) return work.fails();
  if (!alpha && color) work.image.format = PNG_FORMAT_RGB; // says what the fourth byte means, no more
  return createImage(std::move(pixels), size, work.image);
}

NSData *QVImagePNG(CGImageRef image) {
  const PixelFormat &format = qvdevice::formatOf(image);
  Work work;
  work.image.width = static_cast<png_uint_32>(CGImageGetWidth(image));
  work.image.height = static_cast<png_uint_32>(CGImageGetHeight(image));
  work.image.format = format.size == 1 ? PNG_FORMAT_GRAY : format.hasAlpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
  const size_t stride = size_t{work.image.width} * PNG_IMAGE_PIXEL_CHANNELS(work.image.format);
  const Bytes rows(static_cast<std::uint8_t *>(std::malloc(stride * work.image.height)));
  if (!rows) {
    QVSayWhy("PNG", "there is no memory for the rows");
    return nil;
  }
  for (size_t y = 0; y < work.image.height; ++y) {
    std::uint8_t *const to = rows.get() + y * stride;
    if (format.size == 1) {
      std::copy_n(qvdevice::rowOf(image, y), stride, to);
    } else {
      rowToPNG(image, y, to);
    }
  }
  png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(work.image);
  Bytes file(static_cast<std::uint8_t *>(std::malloc(size)));
  if (!file) {
    QVSayWhy("PNG", "there is no memory for the file");
    return nil;
  }
  if (!png_image_write_to_memory(&work.image, file.get(), &size, 0, rows.get(), 0, nullptr)) {
    return work.fails();
  }
  return [NSData dataWithBytes:file.get() length:size];
}
