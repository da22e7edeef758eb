#pragma once

#include <Accelerate/vImage_Types.h>

VIMAGE_BEGIN

/// Each pixel of `dest` becomes the mean of the `kernel_width` x `kernel_height` pixels around it in `src`, channel by
/// channel. The region of `src` that is convolved has the size of `dest` and begins at the offset to it; what lies
/// around it in `src` takes part.
///
/// The mean is taken down the columns first and then along the rows, each rounded to the nearest value. Both sizes are
/// odd, so that no mean lies halfway between two.
///
/// `flags` must hold kvImageEdgeExtend: outside `src` its outermost pixels go on. kvImageDoNotTile keeps the work on
/// the calling thread. With kvImageGetTempBufferSize the result is the size in bytes that `tempBuffer` must have, and
/// nothing else happens; without a `tempBuffer` one is allocated for the call. `backgroundColor` is not used.
///
/// Errors, of which the first that applies is answered: kvImageNullPointerArgument; kvImageUnknownFlagsBit for
/// any other flag;
/// kvImageInvalidEdgeStyle for any other choice of edges; kvImageInvalidKernelSize for an even size;
/// kvImageRoiLargerThanInputBuffer; kvImageInvalidOffset_X, kvImageInvalidOffset_Y for a region that leaves `src`;
/// kvImageInvalidRowBytes; kvImageOutOfPlaceOperationRequired when the buffers overlap; kvImageMemoryAllocationError.
vImage_Error vImageBoxConvolve_ARGB8888(const vImage_Buffer* src, const vImage_Buffer* dest, void* tempBuffer,
                                        vImagePixelCount srcOffsetToROI_X, vImagePixelCount srcOffsetToROI_Y,
                                        uint32_t kernel_height, uint32_t kernel_width, const Pixel_8888 backgroundColor,
                                        vImage_Flags flags);

VIMAGE_END
