// The thread's own stack of contexts to draw in.
#pragma once

#include "../CoreGraphics/CGContext.hpp"
#include "UIImage.hpp"

extern "C" {
void qvsbGraphicsBeginImageContextWithOptions(qvsb::CGSize size, qvsb::BOOL opaque, qvsb::CGFloat scale)
    QVSB_SYMBOL(UIGraphicsBeginImageContextWithOptions);
qvsb::CGContextRef qvsbGraphicsGetCurrentContext() QVSB_SYMBOL(UIGraphicsGetCurrentContext);
objc_object* qvsbGraphicsGetImageFromCurrentImageContext() QVSB_SYMBOL(UIGraphicsGetImageFromCurrentImageContext);
void qvsbGraphicsEndImageContext() QVSB_SYMBOL(UIGraphicsEndImageContext);
}

namespace qvsb {

/// Begins a context of a size in points, with so many pixels in a point, and ends it with itself. Its y grows
/// downwards.
class ImageContext {
public:
  ImageContext(CGSize size, bool opaque, CGFloat scale) {
    qvsbGraphicsBeginImageContextWithOptions(size, opaque ? YES : NO, scale);
  }
  ~ImageContext() { qvsbGraphicsEndImageContext(); }
  ImageContext(const ImageContext&) = delete;
  ImageContext& operator=(const ImageContext&) = delete;

  /// Null when there was no memory for it.
  CGContextRef get() const { return qvsbGraphicsGetCurrentContext(); }
  /// What has been drawn; nil without memory.
  UIImage image() const { return UIImage(qvsbGraphicsGetImageFromCurrentImageContext()); }
};

} // namespace qvsb
