// Drawing. Coordinates grow upwards unless the context's transformation says otherwise. A NULL context is drawn into
// without effect. Any thread, one at a time for each context.
#pragma once

#import <CoreGraphics/CGColor.h>
#import <CoreGraphics/CGGeometry.h>
#import <CoreGraphics/CGImage.h>

typedef struct CGContext *CGContextRef;

CG_EXTERN CGContextRef CGContextRetain(CGContextRef context);
CG_EXTERN void CGContextRelease(CGContextRef context);

/// The transformation, the clipping and the colour. What was not saved is not restored.
CG_EXTERN void CGContextSaveGState(CGContextRef context);
CG_EXTERN void CGContextRestoreGState(CGContextRef context);

/// A scale of 0 changes nothing: nothing could be drawn any more.
CG_EXTERN void CGContextScaleCTM(CGContextRef context, CGFloat sx, CGFloat sy);
CG_EXTERN void CGContextTranslateCTM(CGContextRef context, CGFloat tx, CGFloat ty);
CG_EXTERN void CGContextRotateCTM(CGContextRef context, CGFloat angle);

CG_EXTERN void CGContextClipToRect(CGContextRef context, CGRect rect);
/// Until the state is restored, paint passes where the image, laid over the rectangle, lets it: as much as its alpha
/// says, or its grey value when it has grey and no alpha. A mask image lets it through where it is 0. Any other image
/// without alpha lets everything in the rectangle pass.
CG_EXTERN void CGContextClipToMask(CGContextRef context, CGRect rect, CGImageRef mask);

CG_EXTERN void CGContextSetFillColorWithColor(CGContextRef context, CGColorRef color);
CG_EXTERN void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha);
CG_EXTERN void CGContextFillRect(CGContextRef context, CGRect rect);
CG_EXTERN void CGContextClearRect(CGContextRef context, CGRect rect);

/// Lays the image over the rectangle, its first row where y is greatest. Pixels that fall on pixels stay as they are.
CG_EXTERN void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image);
