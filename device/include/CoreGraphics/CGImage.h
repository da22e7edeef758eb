#pragma once

#import <CoreGraphics/CGColorSpace.h>
#import <CoreGraphics/CGDataProvider.h>
#import <CoreGraphics/CGGeometry.h>

typedef struct CGImage *CGImageRef;

typedef NS_ENUM(uint32_t, CGImageAlphaInfo) {
  kCGImageAlphaNone,
  kCGImageAlphaPremultipliedLast,
  kCGImageAlphaPremultipliedFirst,
  kCGImageAlphaLast,
  kCGImageAlphaFirst,
  kCGImageAlphaNoneSkipLast,
  kCGImageAlphaNoneSkipFirst,
  kCGImageAlphaOnly,
};

typedef uint32_t CGBitmapInfo;
enum {
  kCGBitmapAlphaInfoMask = 0x1F,
  kCGBitmapFloatComponents = 1 << 8,
  kCGBitmapByteOrderMask = 0x7000,
  kCGBitmapByteOrderDefault = 0 << 12,
  kCGBitmapByteOrder16Little = 1 << 12,
  kCGBitmapByteOrder32Little = 2 << 12,
  kCGBitmapByteOrder16Big = 3 << 12,
  kCGBitmapByteOrder32Big = 4 << 12,
  kCGBitmapByteOrder32Host = kCGBitmapByteOrder32Little,
};

/// Known here are 8 bits a component: grey without alpha or alpha alone in 8 bits a pixel; red, green and blue in 24
/// (in this order, without alpha) or 32, with alpha or a byte to skip before or after them. NULL for anything else, for
/// an empty image, and for data that is too short; a line on standard error says which. `decode` has to be NULL.
CG_EXTERN CGImageRef CGImageCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                                   size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo,
                                   CGDataProviderRef provider, const CGFloat *decode, bool shouldInterpolate,
                                   CGColorRenderingIntent intent);
/// A mask of 8 bits a pixel, which covers where it is 255 and lets paint through where it is 0.
CG_EXTERN CGImageRef CGImageMaskCreate(size_t width, size_t height, size_t bitsPerComponent, size_t bitsPerPixel,
                                       size_t bytesPerRow, CGDataProviderRef provider, const CGFloat *decode,
                                       bool shouldInterpolate);

CG_EXTERN CGImageRef CGImageRetain(CGImageRef image);
CG_EXTERN void CGImageRelease(CGImageRef image);

// All answer 0, or NULL, for NULL.
CG_EXTERN bool CGImageIsMask(CGImageRef image);
CG_EXTERN size_t CGImageGetWidth(CGImageRef image);
CG_EXTERN size_t CGImageGetHeight(CGImageRef image);
CG_EXTERN size_t CGImageGetBitsPerComponent(CGImageRef image);
CG_EXTERN size_t CGImageGetBitsPerPixel(CGImageRef image);
CG_EXTERN size_t CGImageGetBytesPerRow(CGImageRef image);
CG_EXTERN CGColorSpaceRef CGImageGetColorSpace(CGImageRef image);
CG_EXTERN CGImageAlphaInfo CGImageGetAlphaInfo(CGImageRef image);
CG_EXTERN CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image);
CG_EXTERN CGDataProviderRef CGImageGetDataProvider(CGImageRef image);
