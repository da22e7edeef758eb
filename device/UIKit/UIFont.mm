#import "FontWeight.h"

#include <cmath>

// The platform's own values.
const UIFontWeight UIFontWeightRegular = 0;
const UIFontWeight UIFontWeightMedium = 0.23;
const UIFontWeight UIFontWeightSemibold = 0.3;
const UIFontWeight UIFontWeightBold = 0.4;

namespace {

const CGFloat usualSize = 17;

} // namespace

@implementation UIFont

+ (UIFont *)systemFontOfSize:(CGFloat)size {
  return [self systemFontOfSize:size weight:UIFontWeightRegular];
}

+ (UIFont *)boldSystemFontOfSize:(CGFloat)size {
  return [self systemFontOfSize:size weight:UIFontWeightBold];
}

+ (UIFont *)systemFontOfSize:(CGFloat)size weight:(UIFontWeight)weight {
  UIFont *const font = [[[self alloc] init] autorelease];
  font->_pointSize = std::isfinite(size) && size > 0 ? size : usualSize;
  font->_weight = weight;
  return font;
}

@synthesize pointSize = _pointSize;

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return [self retain];
}

- (BOOL)isEqual:(id)other {
  if (![other isKindOfClass:[UIFont class]]) return NO;
  UIFont *const font = static_cast<UIFont *>(other);
  return font->_pointSize == _pointSize && font->_weight == _weight;
}

- (NSUInteger)hash {
  return static_cast<NSUInteger>(_pointSize * 16);
}

@end

@implementation UIFont (QVDeviceFont)

- (UIFontWeight)qvdevice_weight {
  return _weight;
}

@end
