#pragma once

#include <Accelerate/vImage_Types.h>

VIMAGE_BEGIN

/// Each pixel, as a row of four values, is multiplied with `matrix` (rows one after the other: the entry for what the
/// source's channel i gives to the result's channel j is `matrix[4 * i + j]`):
/// `dest[j] = (sum over i of matrix[4 * i + j] * (src[i] + pre_bias[i]) + post_bias[j]) / divisor`,
/// the quotient without its fraction, held within 0 to 255. Either bias may be NULL, which is zero. For a quotient that
/// is rounded to the nearest value `post_bias` is half of the divisor.
///
/// The sum has 32 bits; one that needs more wraps around. `dest` may be `src`, the same data with the same rowBytes;
/// otherwise the two must not overlap. kvImageDoNotTile keeps the work on the calling thread.
///
/// Errors, of which the first that applies is answered: kvImageNullPointerArgument; kvImageUnknownFlagsBit for any
/// other flag; kvImageInvalidParameter for a divisor of 0; kvImageBufferSizeMismatch when width or height differ;
/// kvImageInvalidRowBytes; kvImageOutOfPlaceOperationRequired when the buffers overlap in another way.
vImage_Error vImageMatrixMultiply_ARGB8888(const vImage_Buffer* src, const vImage_Buffer* dest,
                                           const int16_t matrix[4 * 4], int32_t divisor, const int16_t* pre_bias_p,
                                           const int32_t* post_bias_p, vImage_Flags flags);

VIMAGE_END
