// Drawing. One thread at a time for each context.
#pragma once

#include "CGColor.hpp"
#include "CGGeometry.hpp"
#include "CGImage.hpp"

namespace qvsb {

using CGContextRef = struct CGContext*;

} // namespace qvsb

extern "C" {
void qvsbContextSaveGState(qvsb::CGContextRef context) QVSB_SYMBOL(CGContextSaveGState);
void qvsbContextRestoreGState(qvsb::CGContextRef context) QVSB_SYMBOL(CGContextRestoreGState);
void qvsbContextScaleCTM(qvsb::CGContextRef context, qvsb::CGFloat sx, qvsb::CGFloat sy) QVSB_SYMBOL(CGContextScaleCTM);
void qvsbContextTranslateCTM(qvsb::CGContextRef context, qvsb::CGFloat tx, qvsb::CGFloat ty)
    QVSB_SYMBOL(CGContextTranslateCTM);
void qvsbContextClipToMask(qvsb::CGContextRef context, qvsb::CGRect rect, qvsb::CGImageRef mask)
    QVSB_SYMBOL(CGContextClipToMask);
void qvsbContextDrawImage(qvsb::CGContextRef context, qvsb::CGRect rect, qvsb::CGImageRef image)
    QVSB_SYMBOL(CGContextDrawImage);
void qvsbContextSetFillColorWithColor(qvsb::CGContextRef context, qvsb::CGColorRef color)
    QVSB_SYMBOL(CGContextSetFillColorWithColor);
void qvsbContextFillRect(qvsb::CGContextRef context, qvsb::CGRect rect) QVSB_SYMBOL(CGContextFillRect);
}

namespace qvsb {

/// What is set while it lives ends with it: transformation, clipping, colour.
class SavedGState {
public:
  explicit SavedGState(CGContextRef context) : context_(context) { qvsbContextSaveGState(context); }
  ~SavedGState() { qvsbContextRestoreGState(context_); }
  SavedGState(const SavedGState&) = delete;
  SavedGState& operator=(const SavedGState&) = delete;

private:
  CGContextRef context_;
};

inline void CGContextScaleCTM(CGContextRef context, CGFloat sx, CGFloat sy) { qvsbContextScaleCTM(context, sx, sy); }
inline void CGContextTranslateCTM(CGContextRef context, CGFloat tx, CGFloat ty) {
  qvsbContextTranslateCTM(context, tx, ty);
}
/// Paint passes where the mask, laid over the rectangle, lets it.
inline void CGContextClipToMask(CGContextRef context, CGRect rect, CGImageRef mask) {
  qvsbContextClipToMask(context, rect, mask);
}
/// The image's first row lies where y is greatest.
inline void CGContextDrawImage(CGContextRef context, CGRect rect, CGImageRef image) {
  qvsbContextDrawImage(context, rect, image);
}
inline void CGContextSetFillColorWithColor(CGContextRef context, CGColorRef color) {
  qvsbContextSetFillColorWithColor(context, color);
}
inline void CGContextFillRect(CGContextRef context, CGRect rect) { qvsbContextFillRect(context, rect); }

} // namespace qvsb
