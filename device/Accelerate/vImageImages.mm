// From images to vImage's buffers and back.
#include <Accelerate/vImage_Utilities.h>

#include "CoreGraphics/Diagnostics.h"
#include "CoreGraphics/Images.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace {

/// A whole line of any cache that there is, so that no two rows share one.
constexpr size_t kAlignment = 64;

constexpr CGBitmapInfo kPremultipliedBGRA =
    static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedFirst) | static_cast<CGBitmapInfo>(kCGBitmapByteOrder32Little);

/// The error as it is, and its reason on standard error when the caller has asked for it.
vImage_Error fails(vImage_Error error, const char *function, const char *why, vImage_Flags flags) {
  if ((flags & kvImagePrintDiagnosticsToConsole) != 0) QVSayWhy(function, why);
  return error;
}

bool hasUnknown(vImage_Flags flags) {
  constexpr vImage_Flags kKnown =
      kvImageDoNotTile | kvImageHighQualityResampling | kvImagePrintDiagnosticsToConsole | kvImageNoAllocate;
  return (flags & ~kKnown) != 0;
}

/// The bytes of a row, padding included; 0 when there are too many.
size_t rowBytesFor(vImagePixelCount width, uint32_t pixelBits) {
  if (width > (std::numeric_limits<size_t>::max() - 8 * kAlignment) / pixelBits) return 0;
  return ((width * pixelBits + 7) / 8 + kAlignment - 1) / kAlignment * kAlignment;
}

/// What is wrong with the format; null for the only one that this device knows.
const char *faultIn(const vImage_CGImageFormat &format) {
  if (format.version != 0) return "the format is of another version";
  if (format.bitsPerComponent != 8 || format.bitsPerPixel != 32 || format.bitmapInfo != kPremultipliedBGRA) {
    return "this device knows pixels of blue, green, red and alpha, 8 bits each and premultiplied, and no others";
  }
  if (format.colorSpace != nullptr && CGColorSpaceGetModel(format.colorSpace) != kCGColorSpaceModelRGB) {
    return "the colour space has other components than the pixels";
  }
  if (format.decode != nullptr) return "this device does not map components";
  return nullptr;
}

/// Who gets the pixels when their image has gone.
struct Pixels {
  void (*callback)(void *userData, void *data);
  void *userData;
  /// As long as there is no image they are the caller's.
  bool takenOver = false;
};

void releasePixels(void *info, const void *data, size_t) {
  const std::unique_ptr<Pixels> pixels(static_cast<Pixels *>(info));
  if (!pixels->takenOver) return;
  auto *const bytes = const_cast<void *>(data);
  if (pixels->callback) {
    pixels->callback(pixels->userData, bytes);
  } else {
    std::free(bytes);
  }
}

/// An image that takes over the pixels; NULL, and nothing taken over, when there can be none.
CGImageRef createImage(const vImage_Buffer &buffer, CGColorRenderingIntent intent,
                       void (*callback)(void *userData, void *data), void *userData) {
  auto *const pixels = new (std::nothrow) Pixels{callback, userData};
  if (pixels == nullptr) return nullptr;
  const size_t size = buffer.rowBytes * (buffer.height - 1) + buffer.width * 4;
  const CGDataProviderRef provider = CGDataProviderCreateWithData(pixels, buffer.data, size, &releasePixels);
  const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  const CGImageRef image = CGImageCreate(buffer.width, buffer.height, 8, 32, buffer.rowBytes, space, kPremultipliedBGRA,
                                         provider, nullptr, true, intent);
  pixels->takenOver = image != nullptr;
  CGColorSpaceRelease(space);
  CGDataProviderRelease(provider);
  return image;
}

/// What is wrong with the buffer; kvImageNoError when nothing is.
vImage_Error errorIn(const vImage_Buffer &buffer) {
  if (buffer.data == nullptr) return kvImageNullPointerArgument;
  if (buffer.width == 0 || buffer.height == 0) return kvImageInvalidParameter;
  const size_t row = rowBytesFor(buffer.width, 32);
  if (row == 0 || buffer.rowBytes < buffer.width * 4 ||
      buffer.height > std::numeric_limits<size_t>::max() / buffer.rowBytes) {
    return kvImageInvalidRowBytes;
  }
  return kvImageNoError;
}

/// Rows of new memory, which free() gives back. The error, if there is one, leaves the buffer as it is.
vImage_Error allocate(vImage_Buffer &buffer, vImagePixelCount height, vImagePixelCount width, uint32_t pixelBits) {
  const size_t rowBytes = rowBytesFor(width, pixelBits);
  void *data = nullptr;
  if (rowBytes == 0 || height > std::numeric_limits<size_t>::max() / rowBytes ||
      ::posix_memalign(&data, kAlignment, height * rowBytes) != 0) {
    return kvImageMemoryAllocationError;
  }
  buffer = {.data = data, .height = height, .width = width, .rowBytes = rowBytes};
  return kvImageNoError;
}

} // namespace

vImage_Error vImageBuffer_Init(vImage_Buffer *buf, vImagePixelCount height, vImagePixelCount width, uint32_t pixelBits,
                               vImage_Flags flags) {
  if (buf == nullptr) return fails(kvImageNullPointerArgument, __func__, "there is no buffer", flags);
  if (hasUnknown(flags)) return fails(kvImageUnknownFlagsBit, __func__, "a flag is not known", flags);
  if (height == 0 || width == 0 || pixelBits == 0) {
    return fails(kvImageInvalidParameter, __func__, "the buffer would hold no pixel", flags);
  }
  if ((flags & kvImageNoAllocate) != 0) {
    *buf = {.data = buf->data, .height = height, .width = width, .rowBytes = rowBytesFor(width, pixelBits)};
    return buf->rowBytes != 0 ? static_cast<vImage_Error>(kAlignment) : kvImageInvalidRowBytes;
  }
  const vImage_Error error = allocate(*buf, height, width, pixelBits);
  return error == kvImageNoError ? error : fails(error, __func__, "there is no memory for the pixels", flags);
}

vImage_Error vImageBuffer_InitWithCGImage(vImage_Buffer *buf, vImage_CGImageFormat *format, const CGFloat *,
                                          CGImageRef image, vImage_Flags flags) {
  if (buf == nullptr || format == nullptr || image == nullptr) {
    return fails(kvImageNullPointerArgument, __func__, "buffer, format or image is missing", flags);
  }
  if (hasUnknown(flags)) return fails(kvImageUnknownFlagsBit, __func__, "a flag is not known", flags);
  if (const char *const fault = faultIn(*format)) return fails(kvImageInvalidImageFormat, __func__, fault, flags);
  if (CGImageIsMask(image)) return fails(kvImageInvalidImageObject, __func__, "a mask has no colours", flags);
  const size_t width = CGImageGetWidth(image);
  const size_t height = CGImageGetHeight(image);
  vImage_Buffer filled = *buf;
  if ((flags & kvImageNoAllocate) == 0) {
    if (const vImage_Error error = allocate(filled, height, width, 32); error != kvImageNoError) {
      return fails(error, __func__, "there is no memory for the pixels", flags);
    }
  } else if (const vImage_Error error = errorIn(filled); error != kvImageNoError) {
    return fails(error, __func__, "the buffer has no place for pixels", flags);
  } else if (filled.width != width || filled.height != height) {
    return fails(kvImageBufferSizeMismatch, __func__, "image and buffer differ in size", flags);
  }
  for (size_t y = 0; y < height; ++y) {
    qvdevice::rowToCairo(qvdevice::rowOf(image, y), static_cast<std::uint8_t *>(filled.data) + y * filled.rowBytes,
                         width, qvdevice::formatOf(image));
  }
  *buf = filled;
  return kvImageNoError;
}

CGImageRef vImageCreateCGImageFromBuffer(const vImage_Buffer *buf, const vImage_CGImageFormat *format,
                                         void (*callback)(void *userData, void *buf_data), void *userData,
                                         vImage_Flags flags, vImage_Error *error) {
  vImage_Error ignored = kvImageNoError;
  vImage_Error &reason = error ? *error : ignored;
  const auto refused = [&reason, flags](vImage_Error code, const char *why) {
    reason = fails(code, "vImageCreateCGImageFromBuffer", why, flags);
    return nullptr;
  };
  if (buf == nullptr || format == nullptr) return refused(kvImageNullPointerArgument, "buffer or format is missing");
  if (hasUnknown(flags)) return refused(kvImageUnknownFlagsBit, "a flag is not known");
  if (const char *const fault = faultIn(*format)) return refused(kvImageInvalidImageFormat, fault);
  if (const vImage_Error wrong = errorIn(*buf)) return refused(wrong, "the buffer holds no pixels");

  CGImageRef image = nullptr;
  if ((flags & kvImageNoAllocate) != 0) {
    image = createImage(*buf, format->renderingIntent, callback, userData);
  } else {
    vImage_Buffer copy{};
    if (allocate(copy, buf->height, buf->width, 32) == kvImageNoError) {
      for (size_t y = 0; y < buf->height; ++y) {
        std::memcpy(static_cast<std::uint8_t *>(copy.data) + y * copy.rowBytes,
                    static_cast<const std::uint8_t *>(buf->data) + y * buf->rowBytes, buf->width * 4);
      }
      image = createImage(copy, format->renderingIntent, nullptr, nullptr);
      if (image == nullptr) std::free(copy.data);
    }
  }
  if (image == nullptr) return refused(kvImageMemoryAllocationError, "there is no memory for the image");
  reason = kvImageNoError;
  return image;
}
