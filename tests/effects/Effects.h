#pragma once

#import "support/Pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

@interface NSObject (UIImageEffects)
+ (UIImage *)imageByApplyingLightEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingExtraLightEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingDarkEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingTintEffectWithColor:(UIColor *)color toImage:(UIImage *)image;
+ (UIImage *)imageByApplyingBlurToImage:(UIImage *)image
                             withRadius:(CGFloat)radius
                              tintColor:(UIColor *)tintColor
                  saturationDeltaFactor:(CGFloat)factor
                              maskImage:(UIImage *)mask;
@end

/// A picture that says what it is asked: no bitmap, and a size of its own.
@interface QVSizedImage : UIImage {
  CGSize _size;
}
+ (UIImage *)imageWithSize:(CGSize)size;
@end

/// The class by the name that apps know it by.
Class effects();

inline UIImage *blurred(UIImage *image, CGFloat radius, UIColor *tint, CGFloat factor, UIImage *mask = nil) {
  return [effects() imageByApplyingBlurToImage:image withRadius:radius tintColor:tint saturationDeltaFactor:factor
                                     maskImage:mask];
}

/// A pool, and the lines that the platform's log has got since the test began.
class Effects : public ::testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

  /// Without time and process in front of them.
  static std::vector<std::string> log();
  static void clearLog();
  /// All that is autoreleased goes.
  void drain();

private:
  NSAutoreleasePool *pool = nil;
};

/// What `%@` shows of an object.
inline std::string shown(id object) { return [[NSString stringWithFormat:@"%@", object] UTF8String]; }
