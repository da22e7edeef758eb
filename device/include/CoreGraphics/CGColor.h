#pragma once

#import <CoreGraphics/CGColorSpace.h>

typedef struct CGColor *CGColorRef;

/// `components` holds one value for each of the space's components, and alpha after them. NULL without a space or
/// components.
CG_EXTERN CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat *components);
CG_EXTERN CGColorRef CGColorRetain(CGColorRef color);
CG_EXTERN void CGColorRelease(CGColorRef color);
CG_EXTERN bool CGColorEqualToColor(CGColorRef a, CGColorRef b);
/// Alpha counts: 2 for grey, 4 for red, green and blue, 1 for a pattern. 0 for NULL.
CG_EXTERN size_t CGColorGetNumberOfComponents(CGColorRef color);
CG_EXTERN const CGFloat *CGColorGetComponents(CGColorRef color);
CG_EXTERN CGFloat CGColorGetAlpha(CGColorRef color);
CG_EXTERN CGColorSpaceRef CGColorGetColorSpace(CGColorRef color);
