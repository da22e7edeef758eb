// Colours are those of the device; nothing here converts between profiles.
#pragma once

#import <CoreGraphics/CGBase.h>

typedef struct CGColorSpace *CGColorSpaceRef;

typedef NS_ENUM(int, CGColorSpaceModel) {
  kCGColorSpaceModelUnknown = -1,
  kCGColorSpaceModelMonochrome = 0,
  kCGColorSpaceModelRGB = 1,
  kCGColorSpaceModelPattern = 6,
};

typedef NS_ENUM(int, CGColorRenderingIntent) {
  kCGRenderingIntentDefault = 0,
  kCGRenderingIntentAbsoluteColorimetric = 1,
  kCGRenderingIntentRelativeColorimetric = 2,
  kCGRenderingIntentPerceptual = 3,
  kCGRenderingIntentSaturation = 4,
};

CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceRGB(void);
CG_EXTERN CGColorSpaceRef CGColorSpaceCreateDeviceGray(void);
CG_EXTERN CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space);
CG_EXTERN void CGColorSpaceRelease(CGColorSpaceRef space);
CG_EXTERN CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space);
/// Without alpha; 0 for NULL and for patterns.
CG_EXTERN size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space);
