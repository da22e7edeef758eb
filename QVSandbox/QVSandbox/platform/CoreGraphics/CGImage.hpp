// Bitmaps.
#pragma once

#include <cstdint>

#include "../objc/encoding.hpp"

namespace qvsb {

using CGImageRef = struct CGImage*;
template <> struct Encoding<CGImageRef> {
  static constexpr const char* text = "^{CGImage=}";
};

using CGBitmapInfo = std::uint32_t;
/// The part of the information that tells of alpha: one of the values after it.
inline constexpr CGBitmapInfo kCGBitmapAlphaInfoMask = 31;
inline constexpr CGBitmapInfo kCGImageAlphaNone = 0;
inline constexpr CGBitmapInfo kCGImageAlphaPremultipliedFirst = 2;
inline constexpr CGBitmapInfo kCGImageAlphaNoneSkipLast = 5;
inline constexpr CGBitmapInfo kCGImageAlphaNoneSkipFirst = 6;
inline constexpr CGBitmapInfo kCGBitmapByteOrder32Little = 8192;

} // namespace qvsb

extern "C" {
qvsb::CGBitmapInfo qvsbImageGetBitmapInfo(qvsb::CGImageRef image) QVSB_SYMBOL(CGImageGetBitmapInfo);
void qvsbImageRelease(qvsb::CGImageRef image) QVSB_SYMBOL(CGImageRelease);
}

namespace qvsb {

inline CGBitmapInfo CGImageGetBitmapInfo(CGImageRef image) { return qvsbImageGetBitmapInfo(image); }
/// Null is allowed.
inline void CGImageRelease(CGImageRef image) { qvsbImageRelease(image); }

} // namespace qvsb
