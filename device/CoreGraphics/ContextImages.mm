// Images and masks, as Cairo wants them.
#include "CoreGraphics/Context.h"

#include "CoreGraphics/Images.h"

#include <cmath>
#include <cstdint>

namespace qvdevice {

namespace {

/// What a transformation may be off by, in pixels, to be taken for an exact one: rounding leaves as much.
constexpr double kTolerance = 1e-4;

bool nearly(double value, double whole) { return std::abs(value - whole) < kTolerance; }

/// Makes a matrix that all but maps pixels onto pixels do so. False for any other.
bool snap(cairo_matrix_t &matrix, int width, int height) {
  const double xx = matrix.xx < 0 ? -1 : 1;
  const double yy = matrix.yy < 0 ? -1 : 1;
  if (!nearly(matrix.xx * width, xx * width) || !nearly(matrix.yy * height, yy * height) ||
      !nearly(matrix.xy * height, 0) || !nearly(matrix.yx * width, 0) || !nearly(matrix.x0, std::round(matrix.x0)) ||
      !nearly(matrix.y0, std::round(matrix.y0))) {
    return false;
  }
  cairo_matrix_init(&matrix, xx, 0, 0, yy, std::round(matrix.x0), std::round(matrix.y0));
  return true;
}

/// Cairo reads it where it lies. Null when it cannot.
cairo_surface_t *surfaceOnMemory(CGImageRef image) {
  const PixelFormat &format = formatOf(image);
  auto *const rows = const_cast<std::uint8_t *>(rowOf(image, 0)); // only ever a source
  const size_t stride = CGImageGetBytesPerRow(image);
  if (!format.isCairos() || stride % 4 != 0 || stride > INT32_MAX || reinterpret_cast<std::uintptr_t>(rows) % 4 != 0) {
    return nullptr;
  }
  return cairo_image_surface_create_for_data(rows, format.hasAlpha ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24,
                                             static_cast<int>(CGImageGetWidth(image)),
                                             static_cast<int>(CGImageGetHeight(image)), static_cast<int>(stride));
}

bool isTooLarge(CGImageRef image) {
  return CGImageGetWidth(image) > kLargestSide || CGImageGetHeight(image) > kLargestSide;
}

template <class TranslateRow> Surface translated(CGImageRef image, cairo_format_t format, TranslateRow translateRow) {
  const size_t height = CGImageGetHeight(image);
  Surface surface(
      cairo_image_surface_create(format, static_cast<int>(CGImageGetWidth(image)), static_cast<int>(height)));
  if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
  std::uint8_t *const rows = cairo_image_surface_get_data(surface.get());
  const auto stride = static_cast<size_t>(cairo_image_surface_get_stride(surface.get()));
  for (size_t y = 0; y < height; ++y) {
    translateRow(y, rows + y * stride);
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

} // namespace

Surface surfaceFor(CGImageRef image) {
  if (isTooLarge(image)) return nullptr;
  if (Surface direct(surfaceOnMemory(image)); direct) {
    return cairo_surface_status(direct.get()) == CAIRO_STATUS_SUCCESS ? std::move(direct) : nullptr;
  }
  return translated(image, CAIRO_FORMAT_ARGB32, [image](size_t y, std::uint8_t *to) {
    rowToCairo(rowOf(image, y), to, CGImageGetWidth(image), formatOf(image));
  });
}

void layOver(cairo_t *cairo, CGRect rect, cairo_surface_t *surface) {
  const int width = cairo_image_surface_get_width(surface);
  const int height = cairo_image_surface_get_height(surface);
  cairo_translate(cairo, rect.origin.x, rect.origin.y + rect.size.height);
  cairo_scale(cairo, rect.size.width / width, -rect.size.height / height);
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo, &matrix);
  const bool exact = snap(matrix, width, height);
  cairo_set_matrix(cairo, &matrix);
  cairo_rectangle(cairo, 0, 0, width, height);
  cairo_clip(cairo);
  cairo_set_source_surface(cairo, surface, 0, 0);
  cairo_pattern_set_filter(cairo_get_source(cairo), exact ? CAIRO_FILTER_NEAREST : CAIRO_FILTER_GOOD);
  // So that nothing from beyond the edge is mixed into it.
  cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
}

bool clipToMask(Context &context, CGRect rect, CGImageRef mask) {
  if (isTooLarge(mask)) return false;
  const Surface coverage =
      translated(mask, CAIRO_FORMAT_A8, [mask](size_t y, std::uint8_t *to) { rowToCoverage(mask, y, to); });
  if (!coverage) return false;
  const std::shared_ptr<cairo_surface_t> combined(
      cairo_image_surface_create(CAIRO_FORMAT_A8, cairo_image_surface_get_width(context.surface.get()),
                                 cairo_image_surface_get_height(context.surface.get())),
      CairoDeleter{});
  const Cairo drawing(cairo_create(combined.get()));
  cairo_t *const cairo = drawing.get();
  cairo_matrix_t matrix;
  cairo_get_matrix(context.cairo.get(), &matrix);
  cairo_save(cairo);
  cairo_set_matrix(cairo, &matrix);
  layOver(cairo, rect, coverage.get());
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_paint(cairo);
  cairo_restore(cairo);
  if (const auto &before = context.state().mask) {
    cairo_set_operator(cairo, CAIRO_OPERATOR_DEST_IN);
    cairo_set_source_surface(cairo, before.get(), 0, 0);
    cairo_paint(cairo);
  }
  if (cairo_status(cairo) != CAIRO_STATUS_SUCCESS) return false;
  cairo_surface_flush(combined.get());
  context.state().mask = combined;
  return true;
}

} // namespace qvdevice
