#import <CoreGraphics/CGColorSpace.h>

#import "CoreGraphics/ColorSpaces.h"

@interface QVCGColorSpace : NSObject {
@public
  CGColorSpaceModel _model;
}
@end

@implementation QVCGColorSpace

- (BOOL)isEqual:(id)other {
  return [other isKindOfClass:[QVCGColorSpace class]] && static_cast<QVCGColorSpace *>(other)->_model == _model;
}

- (NSUInteger)hash {
  return static_cast<NSUInteger>(_model);
}

@end

static QVCGColorSpace *objectOf(CGColorSpaceRef space) { return (QVCGColorSpace *)space; }

static CGColorSpaceRef createSpace(CGColorSpaceModel model) {
  QVCGColorSpace *const space = [[QVCGColorSpace alloc] init];
  space->_model = model;
  return (CGColorSpaceRef)space;
}

CGColorSpaceRef CGColorSpaceCreateDeviceRGB() { return createSpace(kCGColorSpaceModelRGB); }

CGColorSpaceRef CGColorSpaceCreateDeviceGray() { return createSpace(kCGColorSpaceModelMonochrome); }

CGColorSpaceRef QVColorSpaceCreatePattern() { return createSpace(kCGColorSpaceModelPattern); }

CGColorSpaceRef CGColorSpaceRetain(CGColorSpaceRef space) { return (CGColorSpaceRef)[objectOf(space) retain]; }

void CGColorSpaceRelease(CGColorSpaceRef space) { [objectOf(space) release]; }

CGColorSpaceModel CGColorSpaceGetModel(CGColorSpaceRef space) {
  return space ? objectOf(space)->_model : kCGColorSpaceModelUnknown;
}

size_t CGColorSpaceGetNumberOfComponents(CGColorSpaceRef space) {
  switch (CGColorSpaceGetModel(space)) {
  case kCGColorSpaceModelMonochrome:
    return 1;
  case kCGColorSpaceModelRGB:
    return 3;
  case kCGColorSpaceModelUnknown:
  case kCGColorSpaceModelPattern:
    return 0;
  }
  return 0;
}
