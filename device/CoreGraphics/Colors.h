#pragma once

#import <CoreGraphics/CGColor.h>
#import <CoreGraphics/CGImage.h>

/// A colour that is an image laid side by side; `scale` is the number of the image's pixels in a point.
CGColorRef QVColorCreateWithPattern(CGImageRef image, CGFloat scale, CGFloat alpha);
/// NULL for a colour that is none such.
CGImageRef QVColorGetPattern(CGColorRef color, CGFloat *scale);
