// Buffers, error codes and flags of vImage, with the platform's names and values.
#pragma once

#include <stddef.h>
#include <stdint.h>
#include <sys/types.h>

#if defined(__cplusplus)
#define VIMAGE_BEGIN extern "C" {
#define VIMAGE_END }
#else
#define VIMAGE_BEGIN
#define VIMAGE_END
#endif

typedef unsigned long vImagePixelCount;

/// Rows of pixels. Whoever allocates `data` frees it; vImage never does.
typedef struct vImage_Buffer {
  void* data;
  vImagePixelCount height;
  vImagePixelCount width;
  size_t rowBytes; ///< from one row to the next, padding included
} vImage_Buffer;

/// 0, or a negative code; a function that is asked for the size of a temporary buffer answers that size.
typedef ssize_t vImage_Error;
enum {
  kvImageNoError = 0,
  kvImageRoiLargerThanInputBuffer = -21766,
  kvImageInvalidKernelSize = -21767,
  kvImageInvalidEdgeStyle = -21768,
  kvImageInvalidOffset_X = -21769,
  kvImageInvalidOffset_Y = -21770,
  kvImageMemoryAllocationError = -21771,
  kvImageNullPointerArgument = -21772,
  kvImageInvalidParameter = -21773,
  kvImageBufferSizeMismatch = -21774,
  kvImageUnknownFlagsBit = -21775,
  kvImageInternalError = -21776,
  kvImageInvalidRowBytes = -21777,
  kvImageInvalidImageFormat = -21778,
  kvImageColorSyncIsAbsent = -21779,
  kvImageOutOfPlaceOperationRequired = -21780,
  kvImageInvalidImageObject = -21781,
  kvImageInvalidCVImageFormat = -21782,
  kvImageUnsupportedConversion = -21783,
  kvImageCoreVideoIsAbsent = -21784
};

typedef uint32_t vImage_Flags;
enum {
  kvImageNoFlags = 0,
  kvImageLeaveAlphaUnchanged = 1,
  kvImageCopyInPlace = 2,
  kvImageBackgroundColorFill = 4,
  kvImageEdgeExtend = 8,
  kvImageDoNotTile = 16,
  kvImageHighQualityResampling = 32,
  kvImageTruncateKernel = 64,
  kvImageGetTempBufferSize = 128,
  kvImagePrintDiagnosticsToConsole = 256,
  kvImageNoAllocate = 512,
  kvImageHDRContent = 1024,
  kvImageDoNotClamp = 2048
};

typedef uint8_t Pixel_8888[4];
