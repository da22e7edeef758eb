#pragma once

#import <CoreGraphics/CGGeometry.h>

/// What of a view's look is its layer's.
@interface CALayer : NSObject {
@private
  CGFloat _cornerRadius;
}

/// Of the background, in points.
@property (nonatomic) CGFloat cornerRadius;

@end
