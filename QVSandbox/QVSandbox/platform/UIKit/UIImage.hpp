#pragma once

#include "../CoreGraphics/CGGeometry.hpp"
#include "../CoreGraphics/CGImage.hpp"
#include "../Foundation/NSObject.hpp"

namespace qvsb {

/// A picture and how large it is to be shown. Any thread.
class UIImage : public NSObject {
  QVSB_HANDLE(UIImage, NSObject)
  /// In points.
  QVSB_METHOD(CGSize, size, "size")
  /// Pixels in a point.
  QVSB_METHOD(CGFloat, scale, "scale")
  /// Null when the picture is no bitmap.
  QVSB_METHOD(CGImageRef, CGImage, "CGImage")
};

} // namespace qvsb
