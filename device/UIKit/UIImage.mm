#import <UIKit/UIImage.h>

#import <UIKit/UIGraphics.h>

#include "CoreGraphics/PNG.h"

#include <cmath>

namespace {

bool liesOnItsSide(UIImageOrientation orientation) {
  switch (orientation) {
  case UIImageOrientationLeft:
  case UIImageOrientationRight:
  case UIImageOrientationLeftMirrored:
  case UIImageOrientationRightMirrored:
    return true;
  case UIImageOrientationUp:
  case UIImageOrientationDown:
  case UIImageOrientationUpMirrored:
  case UIImageOrientationDownMirrored:
    return false;
  }
  return false;
}

/// Turns the context, whose origin is the middle of the image and whose y grows upwards, so that the bitmap is upright.
void turn(CGContextRef context, UIImageOrientation orientation) {
  const bool mirrored = orientation >= UIImageOrientationUpMirrored;
  switch (mirrored ? orientation - UIImageOrientationUpMirrored : orientation) {
  case UIImageOrientationDown:
    CGContextRotateCTM(context, M_PI);
    break;
  case UIImageOrientationLeft:
    CGContextRotateCTM(context, M_PI_2);
    break;
  case UIImageOrientationRight:
    CGContextRotateCTM(context, -M_PI_2);
    break;
  default:
    break;
  }
  if (mirrored) CGContextScaleCTM(context, -1, 1);
}

} // namespace

@implementation UIImage

+ (UIImage *)imageWithCGImage:(CGImageRef)bitmap {
  return [[[self alloc] initWithCGImage:bitmap] autorelease];
}

+ (UIImage *)imageWithCGImage:(CGImageRef)bitmap scale:(CGFloat)scale orientation:(UIImageOrientation)orientation {
  return [[[self alloc] initWithCGImage:bitmap scale:scale orientation:orientation] autorelease];
}

+ (UIImage *)imageWithData:(NSData *)data {
  return [[[self alloc] initWithData:data] autorelease];
}

+ (UIImage *)imageWithData:(NSData *)data scale:(CGFloat)scale {
  return [[[self alloc] initWithData:data scale:scale] autorelease];
}

+ (UIImage *)imageWithContentsOfFile:(NSString *)path {
  return [[[self alloc] initWithContentsOfFile:path] autorelease];
}

- (instancetype)initWithCGImage:(CGImageRef)bitmap {
  return [self initWithCGImage:bitmap scale:1 orientation:UIImageOrientationUp];
}

- (instancetype)initWithCGImage:(CGImageRef)bitmap scale:(CGFloat)scale orientation:(UIImageOrientation)orientation {
  if (bitmap == nullptr) {
    [self release];
    return nil;
  }
  if ((self = [super init])) {
    _bitmap = CGImageRetain(bitmap);
    _scale = scale > 0 && std::isfinite(scale) ? scale : 1;
    _imageOrientation = orientation;
  }
  return self;
}

- (instancetype)initWithData:(NSData *)data {
  return [self initWithData:data scale:1];
}

- (instancetype)initWithData:(NSData *)data scale:(CGFloat)scale {
  const CGImageRef bitmap = data ? QVImageCreateWithPNG(data) : nullptr;
  self = [self initWithCGImage:bitmap scale:scale orientation:UIImageOrientationUp];
  CGImageRelease(bitmap);
  return self;
}

- (instancetype)initWithContentsOfFile:(NSString *)path {
  CGFloat scale = 1;
  NSString *const name = [[path lastPathComponent] stringByDeletingPathExtension];
  if ([name hasSuffix:@"@2x"]) scale = 2;
  if ([name hasSuffix:@"@3x"]) scale = 3;
  return [self initWithData:[NSData dataWithContentsOfFile:path] scale:scale];
}

- (void)dealloc {
  CGImageRelease(_bitmap);
  [super dealloc];
}

- (CGSize)size {
  if (_bitmap == nullptr) return CGSizeZero;
  const auto width = static_cast<CGFloat>(CGImageGetWidth(_bitmap)) / _scale;
  const auto height = static_cast<CGFloat>(CGImageGetHeight(_bitmap)) / _scale;
  return liesOnItsSide(_imageOrientation) ? CGSizeMake(height, width) : CGSizeMake(width, height);
}

- (CGFloat)scale {
  return _bitmap ? _scale : 1;
}

- (UIImageOrientation)imageOrientation {
  return _imageOrientation;
}

- (CGImageRef)CGImage {
  return _bitmap;
}

- (void)drawAtPoint:(CGPoint)point {
  const CGSize size = [self size];
  [self drawInRect:CGRectMake(point.x, point.y, size.width, size.height)];
}

- (void)drawInRect:(CGRect)rect {
  const CGContextRef context = UIGraphicsGetCurrentContext();
  CGContextSaveGState(context);
  CGContextTranslateCTM(context, CGRectGetMidX(rect), CGRectGetMidY(rect));
  CGContextScaleCTM(context, 1, -1);
  turn(context, _imageOrientation);
  const CGSize size = liesOnItsSide(_imageOrientation) ? CGSizeMake(rect.size.height, rect.size.width) : rect.size;
  CGContextDrawImage(context, CGRectMake(-size.width / 2, -size.height / 2, size.width, size.height), _bitmap);
  CGContextRestoreGState(context);
}

@end

NSData *UIImagePNGRepresentation(UIImage *image) { return [image CGImage] ? QVImagePNG([image CGImage]) : nil; }
