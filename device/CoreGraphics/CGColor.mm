#import <CoreGraphics/CGColor.h>

#import "CoreGraphics/ColorSpaces.h"
#import "CoreGraphics/Colors.h"

#include <algorithm>
#include <array>

@interface QVCGColor : NSObject {
@public
  CGColorSpaceRef _space;
  std::array<CGFloat, 4> _components;
  CGImageRef _pattern;
  CGFloat _patternScale;
}
@end

@implementation QVCGColor

- (void)dealloc {
  CGColorSpaceRelease(_space);
  CGImageRelease(_pattern);
  [super dealloc];
}

- (BOOL)isEqual:(id)other {
  if (![other isKindOfClass:[QVCGColor class]]) return NO;
  const QVCGColor *const color = other;
  return [(id)_space isEqual:(id)color->_space] && _components == color->_components && _pattern == color->_pattern &&
         _patternScale == color->_patternScale;
}

- (NSUInteger)hash {
  return static_cast<NSUInteger>(_components[0] * 255) << 8 | static_cast<NSUInteger>(_components[1] * 255);
}

@end

static QVCGColor *objectOf(CGColorRef color) { return (QVCGColor *)color; }

CGColorRef CGColorCreate(CGColorSpaceRef space, const CGFloat *components) {
  const CGColorSpaceModel model = CGColorSpaceGetModel(space);
  if ((model != kCGColorSpaceModelMonochrome && model != kCGColorSpaceModelRGB) || components == nullptr)
    return nullptr;
  QVCGColor *const color = [[QVCGColor alloc] init];
  color->_space = CGColorSpaceRetain(space);
  std::copy_n(components, CGColorSpaceGetNumberOfComponents(space) + 1, color->_components.begin());
  return (CGColorRef)color;
}

CGColorRef QVColorCreateWithPattern(CGImageRef image, CGFloat scale, CGFloat alpha) {
  QVCGColor *const color = [[QVCGColor alloc] init];
  color->_space = QVColorSpaceCreatePattern();
  color->_components[0] = alpha;
  color->_pattern = CGImageRetain(image);
  color->_patternScale = scale;
  return (CGColorRef)color;
}

CGImageRef QVColorGetPattern(CGColorRef color, CGFloat *scale) {
  if (color == nullptr || objectOf(color)->_pattern == nullptr) return nullptr;
  *scale = objectOf(color)->_patternScale;
  return objectOf(color)->_pattern;
}

CGColorRef CGColorRetain(CGColorRef color) { return (CGColorRef)[objectOf(color) retain]; }

void CGColorRelease(CGColorRef color) { [objectOf(color) release]; }

bool CGColorEqualToColor(CGColorRef a, CGColorRef b) { return a == b || (a != nullptr && [objectOf(a) isEqual:(id)b]); }

size_t CGColorGetNumberOfComponents(CGColorRef color) {
  return color ? CGColorSpaceGetNumberOfComponents(objectOf(color)->_space) + 1 : 0;
}

const CGFloat *CGColorGetComponents(CGColorRef color) { return color ? objectOf(color)->_components.data() : nullptr; }

CGFloat CGColorGetAlpha(CGColorRef color) {
  return color ? objectOf(color)->_components[CGColorGetNumberOfComponents(color) - 1] : 0;
}

CGColorSpaceRef CGColorGetColorSpace(CGColorRef color) { return color ? objectOf(color)->_space : nullptr; }
