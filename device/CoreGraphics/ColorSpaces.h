#pragma once

#import <CoreGraphics/CGColorSpace.h>

/// The space of colours that are images laid side by side.
CGColorSpaceRef QVColorSpaceCreatePattern(void);
