// A context as Cairo and as our own.
#pragma once

#import <CoreGraphics/CGContext.h>

#include <cairo.h>

#include <memory>
#include <vector>

namespace qvdevice {

struct CairoDeleter {
  void operator()(cairo_t *cairo) const { cairo_destroy(cairo); }
  void operator()(cairo_surface_t *surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_pattern_t *pattern) const { cairo_pattern_destroy(pattern); }
};
using Cairo = std::unique_ptr<cairo_t, CairoDeleter>;
using Surface = std::unique_ptr<cairo_surface_t, CairoDeleter>;
using Pattern = std::unique_ptr<cairo_pattern_t, CairoDeleter>;

/// What is saved and restored beside Cairo's own state.
struct DrawingState {
  std::shared_ptr<const std::remove_pointer_t<CGColorRef>> fill;
  /// What lets paint through: as large as the context, one byte a pixel. Null when everything does.
  std::shared_ptr<cairo_surface_t> mask;
};

struct Context {
  Surface surface;
  Cairo cairo;
  std::vector<DrawingState> states;
  /// Some of what should have been drawn is missing.
  bool failed = false;

  DrawingState &state() { return states.back(); }
};

/// Null for NULL.
Context *contextOf(CGContextRef context);

/// A context that draws on the surface; NULL when Cairo has none, for lack of memory or because of the size.
CGContextRef createContext(Surface surface);

/// The size of the largest surface, in each direction.
inline constexpr size_t kLargestSide = 32767;

/// Lets the context's paint through where the mask does. False without memory.
bool clipToMask(Context &context, CGRect rect, CGImageRef mask);
/// The image as Cairo can draw it, in its own memory where that is possible. Null without memory or when it is too
/// large.
Surface surfaceFor(CGImageRef image);
/// Makes the surface the source, laid over the rectangle, and the rectangle the clip. The surface's pixels fall on the
/// target's exactly when they nearly do.
void layOver(cairo_t *cairo, CGRect rect, cairo_surface_t *surface);

} // namespace qvdevice
