#import <UIKit/UIColor.h>

@implementation UIColor

+ (UIColor *)colorWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
  return [[[self alloc] initWithRed:red green:green blue:blue alpha:alpha] autorelease];
}

+ (UIColor *)colorWithWhite:(CGFloat)white alpha:(CGFloat)alpha {
  return [self colorWithRed:white green:white blue:white alpha:alpha];
}

- (UIColor *)initWithRed:(CGFloat)red green:(CGFloat)green blue:(CGFloat)blue alpha:(CGFloat)alpha {
  if ((self = [super init])) {
    _red = red;
    _green = green;
    _blue = blue;
    _alpha = alpha;
  }
  return self;
}

- (UIColor *)colorWithAlphaComponent:(CGFloat)alpha {
  return [UIColor colorWithRed:_red green:_green blue:_blue alpha:alpha];
}

- (BOOL)getRed:(CGFloat *)red green:(CGFloat *)green blue:(CGFloat *)blue alpha:(CGFloat *)alpha {
  if (red) *red = _red;
  if (green) *green = _green;
  if (blue) *blue = _blue;
  if (alpha) *alpha = _alpha;
  return YES;
}

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return [self retain];
}

- (BOOL)isEqual:(id)other {
  if (![other isKindOfClass:[UIColor class]]) return NO;
  UIColor *const color = other;
  return _red == color->_red && _green == color->_green && _blue == color->_blue && _alpha == color->_alpha;
}

- (NSUInteger)hash {
  return (NSUInteger)(_red * 255) << 24 | (NSUInteger)(_green * 255) << 16 | (NSUInteger)(_blue * 255) << 8 |
         (NSUInteger)(_alpha * 255);
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
