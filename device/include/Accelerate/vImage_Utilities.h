// From CGImage to vImage's buffers and back.
#pragma once

#include <Accelerate/vImage_Types.h>
#include <CoreGraphics/CoreGraphics.h>

/// How a buffer's pixels are laid out, and what they mean.
typedef struct vImage_CGImageFormat {
  uint32_t bitsPerComponent;
  uint32_t bitsPerPixel;
  CGColorSpaceRef colorSpace; ///< NULL stands for sRGB
  CGBitmapInfo bitmapInfo;
  uint32_t version;      ///< 0
  const CGFloat *decode; ///< NULL for the format's own range
  CGColorRenderingIntent renderingIntent;
} vImage_CGImageFormat;

VIMAGE_BEGIN

/// Fills in `buf`: height, width, rowBytes, and with them newly allocated `data` of such rows, which the caller frees
/// with free(). With kvImageNoAllocate `data` stays as it is, and the result is the alignment in bytes that suits it
/// best. `pixelBits` is the size of a whole pixel.
vImage_Error vImageBuffer_Init(vImage_Buffer *buf, vImagePixelCount height, vImagePixelCount width, uint32_t pixelBits,
                               vImage_Flags flags);

/// Draws `image` in `format` into newly allocated `buf->data`, which the caller frees with free(); with
/// kvImageNoAllocate into the `data` that the caller has set up. `backgroundColor` lies under an image with alpha where
/// the format has none.
vImage_Error vImageBuffer_InitWithCGImage(vImage_Buffer *buf, vImage_CGImageFormat *format,
                                          const CGFloat *backgroundColor, CGImageRef image, vImage_Flags flags);

/// An image of the buffer's pixels, which the caller releases; NULL with the reason in `error`, which may be NULL. The
/// pixels are copied. With kvImageNoAllocate they are used where they are, and `callback` is called with `userData` and
/// `buf->data` when the image needs them no longer; when this fails, `buf->data` is still the caller's.
CGImageRef vImageCreateCGImageFromBuffer(const vImage_Buffer *buf, const vImage_CGImageFormat *format,
                                         void (*callback)(void *userData, void *buf_data), void *userData,
                                         vImage_Flags flags, vImage_Error *error);

VIMAGE_END
