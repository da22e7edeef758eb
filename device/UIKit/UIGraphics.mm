#import <UIKit/UIGraphics.h>

#import <UIKit/UIImage.h>
#import <UIKit/UIScreen.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

struct Entry {
  CGContextRef context; // owned; NULL where it could not be made
  CGFloat scale;
  bool isImage;
};

class Stack {
public:
  Stack() = default;
  Stack(const Stack &) = delete;
  Stack &operator=(const Stack &) = delete;
  ~Stack() {
    while (top()) {
      pop();
    }
  }

  void push(Entry entry) { entries_.push_back(entry); }
  const Entry *top() const { return entries_.empty() ? nullptr : &entries_.back(); }
  void pop() {
    CGContextRelease(entries_.back().context);
    entries_.pop_back();
  }

private:
  std::vector<Entry> entries_;
};

thread_local Stack contexts;

/// The pixels that points take, the last one also in part; what rounding has left over is no pixel. 0 for what is no
/// length.
size_t pixels(CGFloat points, CGFloat scale) {
  const CGFloat exact = std::ceil(points * scale - 1e-4);
  return exact >= 1 && exact <= INT32_MAX ? static_cast<size_t>(exact) : 0;
}

CGContextRef createContext(CGSize size, bool opaque, CGFloat scale) {
  const size_t width = pixels(size.width, scale);
  const size_t height = pixels(size.height, scale);
  if (width == 0 || height == 0) {
    std::fprintf(stderr, "UIGraphicsBeginImageContextWithOptions: {%g, %g} at scale %g has no pixels\n", size.width,
                 size.height, scale);
    return nullptr;
  }
  const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  const CGContextRef context = CGBitmapContextCreate(
      nullptr, width, height, 8, 0, space,
      static_cast<CGBitmapInfo>(opaque ? kCGImageAlphaNoneSkipFirst : kCGImageAlphaPremultipliedFirst) |
          static_cast<CGBitmapInfo>(kCGBitmapByteOrder32Host));
  CGColorSpaceRelease(space);
  CGContextTranslateCTM(context, 0, static_cast<CGFloat>(height));
  CGContextScaleCTM(context, scale, -scale);
  return context;
}

} // namespace

void UIGraphicsBeginImageContextWithOptions(CGSize size, BOOL opaque, CGFloat scale) {
  const CGFloat pixelsInAPoint = scale == 0 ? [[UIScreen mainScreen] scale] : scale;
  contexts.push({createContext(size, opaque, pixelsInAPoint), pixelsInAPoint, true});
}

void UIGraphicsBeginImageContext(CGSize size) { UIGraphicsBeginImageContextWithOptions(size, NO, 1); }

CGContextRef UIGraphicsGetCurrentContext() {
  const Entry *const entry = contexts.top();
  return entry ? entry->context : nullptr;
}

UIImage *UIGraphicsGetImageFromCurrentImageContext() {
  const Entry *const entry = contexts.top();
  if (!entry || !entry->isImage) return nil;
  const CGImageRef bitmap = CGBitmapContextCreateImage(entry->context);
  if (bitmap == nullptr) return nil;
  UIImage *const image = [UIImage imageWithCGImage:bitmap scale:entry->scale orientation:UIImageOrientationUp];
  CGImageRelease(bitmap);
  return image;
}

void UIGraphicsEndImageContext() {
  const Entry *const entry = contexts.top();
  if (entry && entry->isImage) contexts.pop();
}

void UIGraphicsPushContext(CGContextRef context) { contexts.push({CGContextRetain(context), 1, false}); }

void UIGraphicsPopContext() {
  const Entry *const entry = contexts.top();
  if (entry && !entry->isImage) contexts.pop();
}

void UIRectFill(CGRect rect) { CGContextFillRect(UIGraphicsGetCurrentContext(), rect); }
