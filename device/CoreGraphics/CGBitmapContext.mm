#import <CoreGraphics/CGBitmapContext.h>

#import "CoreGraphics/Context.h"
#import "CoreGraphics/Diagnostics.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

using qvdevice::Context;
using qvdevice::contextOf;
using qvdevice::Surface;

static constexpr CGBitmapInfo kWithAlpha =
    static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedFirst) | static_cast<CGBitmapInfo>(kCGBitmapByteOrder32Little);
static constexpr CGBitmapInfo kOpaque =
    static_cast<CGBitmapInfo>(kCGImageAlphaNoneSkipFirst) | static_cast<CGBitmapInfo>(kCGBitmapByteOrder32Little);

/// Why there can be no such context; null when there can.
static const char *faultIn(const void *data, size_t width, size_t height, size_t bitsPerComponent, size_t bytesPerRow,
                           CGColorSpaceRef space, CGBitmapInfo bitmapInfo) {
  if (bitsPerComponent != 8 || CGColorSpaceGetModel(space) != kCGColorSpaceModelRGB ||
      (bitmapInfo != kWithAlpha && bitmapInfo != kOpaque)) {
    return "this device does not draw in that format";
  }
  if (width == 0 || height == 0) return "a context has at least one pixel";
  if (width > qvdevice::kLargestSide || height > qvdevice::kLargestSide) return "this device draws on no such size";
  if (data == nullptr) return nullptr;
  if (bytesPerRow < width * 4 || bytesPerRow % 4 != 0 || bytesPerRow > INT32_MAX ||
      reinterpret_cast<std::uintptr_t>(data) % 4 != 0) {
    return "the rows are too short or not aligned";
  }
  return nullptr;
}

CGContextRef CGBitmapContextCreate(void *data, size_t width, size_t height, size_t bitsPerComponent, size_t bytesPerRow,
                                   CGColorSpaceRef space, CGBitmapInfo bitmapInfo) {
  if (const char *const fault = faultIn(data, width, height, bitsPerComponent, bytesPerRow, space, bitmapInfo)) {
    QVSayWhy(__func__, fault);
    return nullptr;
  }
  const cairo_format_t format = bitmapInfo == kWithAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24;
  const auto columns = static_cast<int>(width);
  const auto rows = static_cast<int>(height);
  Surface surface(data ? cairo_image_surface_create_for_data(static_cast<unsigned char *>(data), format, columns, rows,
                                                             static_cast<int>(bytesPerRow))
                       : cairo_image_surface_create(format, columns, rows));
  const CGContextRef context = qvdevice::createContext(std::move(surface));
  if (context == nullptr) QVSayWhy(__func__, "there is no memory for it");
  return context;
}

static cairo_surface_t *surfaceOf(CGContextRef context) {
  return context ? contextOf(context)->surface.get() : nullptr;
}

void *CGBitmapContextGetData(CGContextRef context) {
  if (context == nullptr) return nullptr;
  cairo_surface_flush(surfaceOf(context));
  return cairo_image_surface_get_data(surfaceOf(context));
}

size_t CGBitmapContextGetWidth(CGContextRef context) {
  return context ? static_cast<size_t>(cairo_image_surface_get_width(surfaceOf(context))) : 0;
}

size_t CGBitmapContextGetHeight(CGContextRef context) {
  return context ? static_cast<size_t>(cairo_image_surface_get_height(surfaceOf(context))) : 0;
}

size_t CGBitmapContextGetBytesPerRow(CGContextRef context) {
  return context ? static_cast<size_t>(cairo_image_surface_get_stride(surfaceOf(context))) : 0;
}

static void freeData(void *, const void *data, size_t) { std::free(const_cast<void *>(data)); }

CGImageRef CGBitmapContextCreateImage(CGContextRef ref) {
  const Context *const context = contextOf(ref);
  if (!context) return nullptr;
  if (context->failed || cairo_status(context->cairo.get()) != CAIRO_STATUS_SUCCESS) {
    QVSayWhy(__func__, "some of it could not be drawn");
    return nullptr;
  }
  const size_t stride = CGBitmapContextGetBytesPerRow(ref);
  const size_t height = CGBitmapContextGetHeight(ref);
  void *const copy = std::malloc(stride * height);
  if (copy == nullptr) {
    QVSayWhy(__func__, "there is no memory for it");
    return nullptr;
  }
  std::memcpy(copy, CGBitmapContextGetData(ref), stride * height);
  const bool opaque = cairo_image_surface_get_format(surfaceOf(ref)) == CAIRO_FORMAT_RGB24;
  const CGDataProviderRef provider = CGDataProviderCreateWithData(nullptr, copy, stride * height, &freeData);
  const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  const CGImageRef image =
      CGImageCreate(CGBitmapContextGetWidth(ref), height, 8, 32, stride, space, opaque ? kOpaque : kWithAlpha, provider,
                    nullptr, true, kCGRenderingIntentDefault);
  CGColorSpaceRelease(space);
  CGDataProviderRelease(provider);
  return image;
}
