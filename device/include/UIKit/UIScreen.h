#pragma once

#import <CoreGraphics/CGGeometry.h>

@interface UIScreen : NSObject

+ (UIScreen *)mainScreen;
+ (NSArray *)screens;

@property (nonatomic, readonly) CGRect bounds;
@property (nonatomic, readonly) CGRect nativeBounds;
@property (nonatomic, readonly) CGFloat scale;

@end
