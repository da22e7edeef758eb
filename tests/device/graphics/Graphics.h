#pragma once

#import "support/Pictures.h"

#include <gtest/gtest.h>

/// A pool for each test.
class Graphics : public ::testing::Test {
protected:
  void SetUp() override { pool = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool drain]; }

private:
  NSAutoreleasePool *pool = nil;
};

namespace graphics {

inline CGColorSpaceRef rgb() { return (CGColorSpaceRef)[(id)CGColorSpaceCreateDeviceRGB() autorelease]; }
inline CGColorSpaceRef gray() { return (CGColorSpaceRef)[(id)CGColorSpaceCreateDeviceGray() autorelease]; }

/// A clear context whose pixels can be looked at.
inline CGContextRef context(size_t width, size_t height) {
  return (CGContextRef)[(id)CGBitmapContextCreate(nullptr, width, height, 8, 0, rgb(), 8194) autorelease];
}

inline support::Picture drawn(CGContextRef context) {
  CGImageRef image = CGBitmapContextCreateImage(context);
  const support::Picture picture = support::pictureOf([UIImage imageWithCGImage:image]);
  CGImageRelease(image);
  return picture;
}

} // namespace graphics
