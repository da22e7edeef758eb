#pragma once

#import <CoreGraphics/CoreGraphics.h>
#import <UIKit/UIKitDefines.h>

/// What has to be done to the bitmap to see it upright.
typedef NS_ENUM(NSInteger, UIImageOrientation) {
  UIImageOrientationUp,
  UIImageOrientationDown,
  UIImageOrientationLeft,
  UIImageOrientationRight,
  UIImageOrientationUpMirrored,
  UIImageOrientationDownMirrored,
  UIImageOrientationLeftMirrored,
  UIImageOrientationRightMirrored,
};

/// A bitmap and how large it is to be shown. Immutable.
@interface UIImage : NSObject {
@private
  CGImageRef _bitmap;
  CGFloat _scale;
  UIImageOrientation _imageOrientation;
}

+ (UIImage *)imageWithCGImage:(CGImageRef)bitmap;
/// A scale that is no positive number counts as 1.
+ (UIImage *)imageWithCGImage:(CGImageRef)bitmap scale:(CGFloat)scale orientation:(UIImageOrientation)orientation;
/// PNG; nil for anything else, and for a PNG that is damaged.
+ (UIImage *)imageWithData:(NSData *)data;
+ (UIImage *)imageWithData:(NSData *)data scale:(CGFloat)scale;
/// Of a file named "...@2x.png" the scale is 2.
+ (UIImage *)imageWithContentsOfFile:(NSString *)path;

- (instancetype)initWithCGImage:(CGImageRef)bitmap;
- (instancetype)initWithCGImage:(CGImageRef)bitmap scale:(CGFloat)scale orientation:(UIImageOrientation)orientation;
- (instancetype)initWithData:(NSData *)data;
- (instancetype)initWithData:(NSData *)data scale:(CGFloat)scale;
- (instancetype)initWithContentsOfFile:(NSString *)path;

/// In points, and as the image is seen: an image that lies on its side is as wide as its bitmap is high.
@property (nonatomic, readonly) CGSize size;
@property (nonatomic, readonly) CGFloat scale;
@property (nonatomic, readonly) UIImageOrientation imageOrientation;
/// NULL for an image that was made of nothing.
@property (nonatomic, readonly) CGImageRef CGImage;

/// Into the current context, upright.
- (void)drawInRect:(CGRect)rect;
- (void)drawAtPoint:(CGPoint)point;

@end

/// Nil for an image without a bitmap.
UIKIT_EXTERN NSData *UIImagePNGRepresentation(UIImage *image);
