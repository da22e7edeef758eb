#include "PixelBuffer.hpp"

#include "UIImageEffects.hpp"

namespace qvsb {

namespace {

constexpr std::uint32_t kBitsPerPixel = 32;

vImage_CGImageFormat format() {
  return {.bitsPerComponent = 8,
          .bitsPerPixel = kBitsPerPixel,
          .colorSpace = nullptr,
          // Blue, green, red, alpha in memory.
          .bitmapInfo = kCGImageAlphaPremultipliedFirst | kCGBitmapByteOrder32Little,
          .version = 0,
          .decode = nullptr,
          .renderingIntent = 0};
}

} // namespace

/// After an error nobody has promised what stands in the buffer.
vImage_Error PixelBuffer::keep(vImage_Error error) {
  if (error != kvImageNoError) {
    buffer_ = {};
  }
  return error;
}

vImage_Error PixelBuffer::load(CGImageRef image) {
  vImage_CGImageFormat wanted = format();
  return keep(vImageBuffer_InitWithCGImage(&buffer_, &wanted, nullptr, image, kvImagePrintDiagnosticsToConsole));
}

vImage_Error PixelBuffer::makeLike(const PixelBuffer& other) {
  return keep(vImageBuffer_Init(&buffer_, other.buffer_.height, other.buffer_.width, kBitsPerPixel, kvImageNoFlags));
}

CGImageRef PixelBuffer::turnIntoImage(vImage_Error& error) {
  const vImage_CGImageFormat made = format();
  CGImageRef image =
      vImageCreateCGImageFromBuffer(&buffer_, &made, &cleanupBuffer, nullptr, kvImageNoAllocate, nullptr);
  if (!image) {
    image = vImageCreateCGImageFromBuffer(&buffer_, &made, nullptr, nullptr, kvImageNoFlags, &error);
    free(buffer_.data);
  }
  buffer_ = {};
  return image;
}

} // namespace qvsb
