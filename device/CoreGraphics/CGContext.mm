#import <CoreGraphics/CGContext.h>

#import "CoreGraphics/Colors.h"
#import "CoreGraphics/Context.h"

#include <cmath>

using qvdevice::Context;
using qvdevice::contextOf;
using qvdevice::Surface;

@interface QVCGContext : NSObject {
@public
  Context *_context;
}
@end

@implementation QVCGContext

- (void)dealloc {
  delete _context;
  [super dealloc];
}

@end

namespace qvdevice {

Context *contextOf(CGContextRef context) {
  return context ? reinterpret_cast<QVCGContext *>(context)->_context : nullptr;
}

CGContextRef createContext(Surface surface) {
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  Cairo cairo(cairo_create(surface.get()));
  if (cairo_status(cairo.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  // Cairo's coordinates grow downwards.
  cairo_translate(cairo.get(), 0, cairo_image_surface_get_height(surface.get()));
  cairo_scale(cairo.get(), 1, -1);
  QVCGContext *const context = [[QVCGContext alloc] init];
  context->_context = new Context{std::move(surface), std::move(cairo), {}};
  context->_context->states.emplace_back();
  return (CGContextRef)context;
}

} // namespace qvdevice

CGContextRef CGContextRetain(CGContextRef context) { return (CGContextRef)[(id)context retain]; }

void CGContextRelease(CGContextRef context) { [(id)context release]; }

void CGContextSaveGState(CGContextRef ref) {
  if (Context *const context = contextOf(ref)) {
    cairo_save(context->cairo.get());
    context->states.push_back(context->state());
  }
}

void CGContextRestoreGState(CGContextRef ref) {
  if (Context *const context = contextOf(ref); context && context->states.size() > 1) {
    cairo_restore(context->cairo.get());
    context->states.pop_back();
  }
}

void CGContextScaleCTM(CGContextRef ref, CGFloat sx, CGFloat sy) {
  Context *const context = contextOf(ref);
  if (context && std::isnormal(sx) && std::isnormal(sy)) cairo_scale(context->cairo.get(), sx, sy);
}

void CGContextTranslateCTM(CGContextRef ref, CGFloat tx, CGFloat ty) {
  Context *const context = contextOf(ref);
  if (context && std::isfinite(tx) && std::isfinite(ty)) cairo_translate(context->cairo.get(), tx, ty);
}

void CGContextRotateCTM(CGContextRef ref, CGFloat angle) {
  Context *const context = contextOf(ref);
  if (context && std::isfinite(angle)) cairo_rotate(context->cairo.get(), angle);
}

/// A rectangle that has a size, which is positive. False for any other.
static bool standardize(CGRect &rect) {
  if (rect.size.width < 0) rect = CGRectMake(CGRectGetMaxX(rect), rect.origin.y, -rect.size.width, rect.size.height);
  if (rect.size.height < 0) rect = CGRectMake(rect.origin.x, CGRectGetMaxY(rect), rect.size.width, -rect.size.height);
  return std::isfinite(rect.origin.x) && std::isfinite(rect.origin.y) && std::isnormal(rect.size.width) &&
         std::isnormal(rect.size.height);
}

void CGContextClipToRect(CGContextRef ref, CGRect rect) {
  Context *const context = contextOf(ref);
  if (!context) return;
  if (!standardize(rect)) rect = CGRectZero; // nothing passes
  cairo_rectangle(context->cairo.get(), rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
  cairo_clip(context->cairo.get());
}

void CGContextClipToMask(CGContextRef ref, CGRect rect, CGImageRef mask) {
  Context *const context = contextOf(ref);
  if (!context || !mask) return;
  if (!standardize(rect)) {
    CGContextClipToRect(ref, CGRectZero);
    return;
  }
  context->failed = !qvdevice::clipToMask(*context, rect, mask) || context->failed;
}

/// Paints the source within the clip, as far as the mask lets it.
static void paint(Context &context) {
  cairo_t *const cairo = context.cairo.get();
  if (const auto &mask = context.state().mask) {
    cairo_identity_matrix(cairo);
    cairo_mask_surface(cairo, mask.get(), 0, 0);
  } else {
    cairo_paint(cairo);
  }
}

void CGContextDrawImage(CGContextRef ref, CGRect rect, CGImageRef image) {
  Context *const context = contextOf(ref);
  if (!context || !image || !standardize(rect)) return;
  const Surface surface = qvdevice::surfaceFor(image);
  if (!surface) {
    context->failed = true;
    return;
  }
  cairo_save(context->cairo.get());
  qvdevice::layOver(context->cairo.get(), rect, surface.get());
  paint(*context);
  cairo_restore(context->cairo.get());
}

void CGContextSetFillColorWithColor(CGContextRef ref, CGColorRef color) {
  if (Context *const context = contextOf(ref)) {
    context->state().fill = {CGColorRetain(color), [](CGColorRef each) { CGColorRelease(each); }};
  }
}

void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green, CGFloat blue, CGFloat alpha) {
  const CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  const CGFloat components[] = {red, green, blue, alpha};
  const CGColorRef color = CGColorCreate(space, components);
  CGContextSetFillColorWithColor(context, color);
  CGColorRelease(color);
  CGColorSpaceRelease(space);
}

/// Tiles grow from the lower left corner of the context, as large as the pattern is in points.
static bool setPattern(Context &context, CGImageRef image, CGFloat scale) {
  cairo_t *const cairo = context.cairo.get();
  const Surface surface = qvdevice::surfaceFor(image);
  if (!surface) return false;
  const qvdevice::Pattern pattern(cairo_pattern_create_for_surface(surface.get()));
  cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
  cairo_matrix_t matrix; // from points to the image's pixels, whose first row is the uppermost
  cairo_matrix_init(&matrix, scale, 0, 0, -scale, 0, static_cast<double>(CGImageGetHeight(image)));
  cairo_pattern_set_matrix(pattern.get(), &matrix);
  cairo_set_source(cairo, pattern.get());
  return true;
}

static bool setSource(Context &context) {
  cairo_t *const cairo = context.cairo.get();
  const CGColorRef color = const_cast<CGColorRef>(context.state().fill.get());
  CGFloat scale = 1;
  if (const CGImageRef pattern = QVColorGetPattern(color, &scale)) return setPattern(context, pattern, scale);
  const CGFloat *const parts = CGColorGetComponents(color);
  if (parts == nullptr) { // black, as long as nobody has set another
    cairo_set_source_rgba(cairo, 0, 0, 0, 1);
  } else if (CGColorGetNumberOfComponents(color) == 2) {
    cairo_set_source_rgba(cairo, parts[0], parts[0], parts[0], parts[1]);
  } else {
    cairo_set_source_rgba(cairo, parts[0], parts[1], parts[2], parts[3]);
  }
  return true;
}

void CGContextFillRect(CGContextRef ref, CGRect rect) {
  Context *const context = contextOf(ref);
  if (!context || !standardize(rect)) return;
  cairo_t *const cairo = context->cairo.get();
  cairo_save(cairo);
  if (setSource(*context)) {
    cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    cairo_clip(cairo);
    paint(*context);
  } else {
    context->failed = true;
  }
  cairo_restore(cairo);
}

void CGContextClearRect(CGContextRef ref, CGRect rect) {
  Context *const context = contextOf(ref);
  if (!context || !standardize(rect)) return;
  cairo_t *const cairo = context->cairo.get();
  cairo_save(cairo);
  cairo_rectangle(cairo, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
  cairo_clip(cairo);
  cairo_set_source_rgba(cairo, 0, 0, 0, 1);
  cairo_set_operator(cairo, CAIRO_OPERATOR_DEST_OUT);
  paint(*context);
  cairo_restore(cairo);
}
