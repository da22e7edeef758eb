// Work on pixels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "../CoreGraphics/CGImage.hpp"

namespace qvsb {

/// Rows of pixels. Whoever has `data` allocated frees it.
struct vImage_Buffer {
  void* data;
  unsigned long height;
  unsigned long width;
  std::size_t rowBytes;
};

struct vImage_CGImageFormat {
  std::uint32_t bitsPerComponent;
  std::uint32_t bitsPerPixel;
  struct CGColorSpace* colorSpace; ///< null for the default
  CGBitmapInfo bitmapInfo;
  std::uint32_t version; ///< 0
  const CGFloat* decode;
  std::int32_t renderingIntent;
};

/// 0, or what went wrong; or the size that was asked for.
using vImage_Error = long;
inline constexpr vImage_Error kvImageNoError = 0;

using vImage_Flags = std::uint32_t;
inline constexpr vImage_Flags kvImageNoFlags = 0;
inline constexpr vImage_Flags kvImageEdgeExtend = 8;
inline constexpr vImage_Flags kvImageGetTempBufferSize = 128;
inline constexpr vImage_Flags kvImagePrintDiagnosticsToConsole = 256;
inline constexpr vImage_Flags kvImageNoAllocate = 512;

} // namespace qvsb

extern "C" {
qvsb::vImage_Error qvsbBufferInitWithCGImage(qvsb::vImage_Buffer* buffer, qvsb::vImage_CGImageFormat* format,
                                             const qvsb::CGFloat* backgroundColor, qvsb::CGImageRef image,
                                             qvsb::vImage_Flags flags) QVSB_SYMBOL(vImageBuffer_InitWithCGImage);
qvsb::vImage_Error qvsbBufferInit(qvsb::vImage_Buffer* buffer, unsigned long height, unsigned long width,
                                  std::uint32_t pixelBits, qvsb::vImage_Flags flags) QVSB_SYMBOL(vImageBuffer_Init);
qvsb::vImage_Error qvsbBoxConvolve(const qvsb::vImage_Buffer* from, const qvsb::vImage_Buffer* to, void* tempBuffer,
                                   unsigned long offsetX, unsigned long offsetY, std::uint32_t kernelHeight,
                                   std::uint32_t kernelWidth, const std::uint8_t* backgroundColor,
                                   qvsb::vImage_Flags flags) QVSB_SYMBOL(vImageBoxConvolve_ARGB8888);
qvsb::vImage_Error qvsbMatrixMultiply(const qvsb::vImage_Buffer* from, const qvsb::vImage_Buffer* to,
                                      const std::int16_t* matrix, std::int32_t divisor, const std::int16_t* preBias,
                                      const std::int32_t* postBias, qvsb::vImage_Flags flags)
    QVSB_SYMBOL(vImageMatrixMultiply_ARGB8888);
qvsb::CGImageRef qvsbCreateCGImageFromBuffer(const qvsb::vImage_Buffer* buffer,
                                             const qvsb::vImage_CGImageFormat* format,
                                             void (*releaseData)(void* userData, void* bufferData), void* userData,
                                             qvsb::vImage_Flags flags, qvsb::vImage_Error* error)
    QVSB_SYMBOL(vImageCreateCGImageFromBuffer);
}

namespace qvsb {

/// Draws the image in the format into `data` that is allocated for it.
inline vImage_Error vImageBuffer_InitWithCGImage(vImage_Buffer* buffer, vImage_CGImageFormat* format,
                                                 const CGFloat* backgroundColor, CGImageRef image, vImage_Flags flags) {
  return qvsbBufferInitWithCGImage(buffer, format, backgroundColor, image, flags);
}

/// Allocates `data`, whose content is anything.
inline vImage_Error vImageBuffer_Init(vImage_Buffer* buffer, unsigned long height, unsigned long width,
                                      std::uint32_t pixelBits, vImage_Flags flags) {
  return qvsbBufferInit(buffer, height, width, pixelBits, flags);
}

/// Each pixel becomes the mean of a box around it, whose sides are odd. Without a temporary buffer vImage allocates one
/// itself, for the one call.
inline vImage_Error vImageBoxConvolve_ARGB8888(const vImage_Buffer* from, const vImage_Buffer* to, void* tempBuffer,
                                               unsigned long offsetX, unsigned long offsetY, std::uint32_t kernelHeight,
                                               std::uint32_t kernelWidth, const std::uint8_t* backgroundColor,
                                               vImage_Flags flags) {
  return qvsbBoxConvolve(from, to, tempBuffer, offsetX, offsetY, kernelHeight, kernelWidth, backgroundColor, flags);
}

/// Row i of the 4x4 matrix tells what a pixel's i-th byte gives to each byte of the result.
inline vImage_Error vImageMatrixMultiply_ARGB8888(const vImage_Buffer* from, const vImage_Buffer* to,
                                                  const std::int16_t* matrix, std::int32_t divisor,
                                                  const std::int16_t* preBias, const std::int32_t* postBias,
                                                  vImage_Flags flags) {
  return qvsbMatrixMultiply(from, to, matrix, divisor, preBias, postBias, flags);
}

/// Owned by the caller; null when it fails. With kvImageNoAllocate the image takes over `data` as it is, and calls
/// `releaseData` once when it needs it no longer; one that fails takes over nothing.
inline CGImageRef vImageCreateCGImageFromBuffer(const vImage_Buffer* buffer, const vImage_CGImageFormat* format,
                                                void (*releaseData)(void* userData, void* bufferData), void* userData,
                                                vImage_Flags flags, vImage_Error* error) {
  return qvsbCreateCGImageFromBuffer(buffer, format, releaseData, userData, flags, error);
}

} // namespace qvsb
