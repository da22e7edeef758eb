#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <UIKit/UIKitDefines.h>

@class UIImage;

// Each thread has its own stack of contexts. Their coordinates grow downwards from the upper left corner, in points.

/// `scale` is the number of pixels in a point; 0 for the screen's. A context that is not opaque is clear at first, an
/// opaque one black. A size that has no pixels, or too many, gives a context that is NULL and has to be ended all the
/// same.
UIKIT_EXTERN void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale);
UIKIT_EXTERN void UIGraphicsBeginImageContext(CGSize size);
/// NULL where there is none.
UIKIT_EXTERN CGContextRef UIGraphicsGetCurrentContext(void);
/// Nil without a context that was begun as an image, and without memory.
UIKIT_EXTERN UIImage *UIGraphicsGetImageFromCurrentImageContext(void);
/// A context that was not begun as an image stays.
UIKIT_EXTERN void UIGraphicsEndImageContext(void);

UIKIT_EXTERN void UIGraphicsPushContext(CGContextRef context);
UIKIT_EXTERN void UIGraphicsPopContext(void);

UIKIT_EXTERN void UIRectFill(CGRect rect);
