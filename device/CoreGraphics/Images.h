#pragma once

#import <CoreGraphics/CGImage.h>

#import "CoreGraphics/PixelFormat.h"

#include <cstdint>

namespace qvdevice {

const PixelFormat& formatOf(CGImageRef image);
const std::uint8_t* rowOf(CGImageRef image, size_t y);

/// How much paint a mask lets through, one byte a pixel; see CGContextClipToMask.
void rowToCoverage(CGImageRef image, size_t y, std::uint8_t* to);

} // namespace qvdevice
