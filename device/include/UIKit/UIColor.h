#pragma once

#import <CoreGraphics/CGColor.h>
#import <CoreGraphics/CGGeometry.h>

@class UIImage;

@interface UIColor : NSObject <NSCopying> {
@private
  CGColorRef _color;
}

+ (UIColor *)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
+ (UIColor *)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha;
+ (UIColor *)colorWithPatternImage:(UIImage *)image;
+ (UIColor *)colorWithCGColor:(CGColorRef)color;
- (UIColor *)initWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha;
- (UIColor *)initWithWhite:(CGFloat)white alpha:(CGFloat)alpha;
- (UIColor *)initWithPatternImage:(UIImage *)image;
- (UIColor *)initWithCGColor:(CGColorRef)color;
- (UIColor *)colorWithAlphaComponent:(CGFloat)alpha;

@property (nonatomic, readonly) CGColorRef CGColor;

/// What the colour consists of; a pattern has neither, and answers NO. Red, green and blue become white by how bright
/// each looks.
- (BOOL)getRed:(CGFloat *)red green:(CGFloat *)green blue:(CGFloat *)blue alpha:(CGFloat *)alpha;
- (BOOL)getWhite:(CGFloat *)white alpha:(CGFloat *)alpha;

/// What the current context fills with from now on.
- (void)set;
- (void)setFill;

+ (UIColor *)blackColor;
+ (UIColor *)whiteColor;
+ (UIColor *)clearColor;
+ (UIColor *)grayColor;
+ (UIColor *)redColor;
+ (UIColor *)greenColor;
+ (UIColor *)blueColor;

@end
