#pragma once

#import <CoreGraphics/CGContext.h>

/// Known here is one format: 8 bits a component, little-endian with the fourth byte alpha (premultiplied first) or
/// skipped. `data` may be NULL for memory of the context's own, which is clear; other memory has to outlive the
/// context. NULL, and a line on standard error, for another format, an empty size, or without memory.
CG_EXTERN CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                             size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo);
/// A copy of what has been drawn. NULL without memory, also when some of the drawing went wrong for lack of it.
CG_EXTERN CGImageRef CGBitmapContextCreateImage(CGContextRef context);
CG_EXTERN void* CGBitmapContextGetData(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetWidth(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetHeight(CGContextRef context);
CG_EXTERN size_t CGBitmapContextGetBytesPerRow(CGContextRef context);
