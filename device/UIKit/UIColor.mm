#import <UIKit/UIColor.h>

#import <UIKit/UIGraphics.h>
#import <UIKit/UIImage.h>

#include "CoreGraphics/Colors.h"

#include <initializer_list>

/// A colour of the space's components and alpha. Owned.
static CGColorRef createColor(CGColorSpaceRef space, std::initializer_list<CGFloat> components) {
  const CGColorRef color = CGColorCreate(space, components.begin());
  CGColorSpaceRelease(space);
  return color;
}

@implementation UIColor

+ (UIColor *)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
  return [[[self alloc] initWithRed:red green:green blue:blue alpha:alpha] autorelease];
}

+ (UIColor *)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
  return [[[self alloc] initWithWhite:white alpha:alpha] autorelease];
}

+ (UIColor *)colorWithPatternImage:(UIImage *)image {
  return [[[self alloc] initWithPatternImage:image] autorelease];
}

+ (UIColor *)colorWithCGColor:(CGColorRef)color {
  return [[[self alloc] initWithCGColor:color] autorelease];
}

- (UIColor *)initWithOwned:(CGColorRef)color {
  if ((self = [super init])) {
    _color = color;
  } else {
    CGColorRelease(color);
  }
  return self;
}

- (UIColor *)initWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
  return [self initWithOwned:createColor(CGColorSpaceCreateDeviceRGB(), {red, green, blue, alpha})];
}

- (UIColor *)initWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
  return [self initWithOwned:createColor(CGColorSpaceCreateDeviceGray(), {white, alpha})];
}

- (UIColor *)initWithPatternImage:(UIImage *)image {
  if ([image CGImage] == nullptr) {
    [self release];
    return nil;
  }
  return [self initWithOwned:QVColorCreateWithPattern([image CGImage], [image scale], 1)];
}

- (UIColor *)initWithCGColor:(CGColorRef)color {
  if (color == nullptr) {
    [self release];
    return nil;
  }
  return [self initWithOwned:CGColorRetain(color)];
}

- (void)dealloc {
  CGColorRelease(_color);
  [super dealloc];
}

- (CGColorRef)CGColor {
  return _color;
}

- (UIColor *)colorWithAlphaComponent:(CGFloat)alpha {
  CGFloat scale = 1;
  if (const CGImageRef pattern = QVColorGetPattern(_color, &scale)) {
    return [[[UIColor alloc] initWithOwned:QVColorCreateWithPattern(pattern, scale, alpha)] autorelease];
  }
  const CGFloat *const parts = CGColorGetComponents(_color);
  if (CGColorGetNumberOfComponents(_color) == 2) return [UIColor colorWithWhite:parts[0] alpha:alpha];
  return [UIColor colorWithRed:parts[0] green:parts[1] blue:parts[2] alpha:alpha];
}

- (BOOL)getRed:(CGFloat *)red green:(CGFloat *)green blue:(CGFloat *)blue alpha:(CGFloat *)alpha {
  const size_t count = CGColorGetNumberOfComponents(_color);
  if (count != 2 && count != 4) return NO;
  const CGFloat *const parts = CGColorGetComponents(_color);
  if (red) *red = parts[0];
  if (green) *green = parts[count == 4 ? 1 : 0];
  if (blue) *blue = parts[count == 4 ? 2 : 0];
  if (alpha) *alpha = parts[count - 1];
  return YES;
}

- (BOOL)getWhite:(CGFloat *)white alpha:(CGFloat *)alpha {
  const size_t count = CGColorGetNumberOfComponents(_color);
  if (count != 2 && count != 4) return NO;
  const CGFloat *const parts = CGColorGetComponents(_color);
  if (white) *white = count == 2 ? parts[0] : 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
  if (alpha) *alpha = parts[count - 1];
  return YES;
}

- (void)set {
  [self setFill];
}

- (void)setFill {
  CGContextSetFillColorWithColor(UIGraphicsGetCurrentContext(), _color);
}

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return [self retain];
}

- (BOOL)isEqual:(id)other {
  return [other isKindOfClass:[UIColor class]] && CGColorEqualToColor(_color, [static_cast<UIColor *>(other) CGColor]);
}

- (NSUInteger)hash {
  return [(id)_color hash];
}

+ (UIColor *)blackColor {
  return [self colorWithWhite:0 alpha:1];
}

+ (UIColor *)whiteColor {
  return [self colorWithWhite:1 alpha:1];
}

+ (UIColor *)clearColor {
  return [self colorWithWhite:0 alpha:0];
}

+ (UIColor *)grayColor {
  return [self colorWithWhite:0.5 alpha:1];
}

+ (UIColor *)redColor {
  return [self colorWithRed:1 green:0 blue:0 alpha:1];
}

+ (UIColor *)greenColor {
  return [self colorWithRed:0 green:1 blue:0 alpha:1];
}

+ (UIColor *)blueColor {
  return [self colorWithRed:0 green:0 blue:1 alpha:1];
}

@end
