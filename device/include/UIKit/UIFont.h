#pragma once

#import <CoreGraphics/CGGeometry.h>
#import <UIKit/UIKitDefines.h>

typedef CGFloat UIFontWeight;
UIKIT_EXTERN const UIFontWeight UIFontWeightRegular;
UIKIT_EXTERN const UIFontWeight UIFontWeightMedium;
UIKIT_EXTERN const UIFontWeight UIFontWeightSemibold;
UIKIT_EXTERN const UIFontWeight UIFontWeightBold;

/// The system's letters in a size, in points, and a weight. Immutable.
@interface UIFont : NSObject <NSCopying> {
@private
  CGFloat _pointSize;
  UIFontWeight _weight;
}

/// A size that is no positive number counts as 17.
+ (UIFont *)systemFontOfSize:(CGFloat)size;
+ (UIFont *)boldSystemFontOfSize:(CGFloat)size;
+ (UIFont *)systemFontOfSize:(CGFloat)size weight:(UIFontWeight)weight;

@property (nonatomic, readonly) CGFloat pointSize;

@end
