#include "Screen/Canvas.h"

#include "CoreGraphics/Context.h"

#include <algorithm>
#include <cmath>

namespace qvdevice {

namespace {

// Cairo counts in 24 bits before the point, of pixels.
constexpr CGFloat kFarthest = 100000;
// Each group takes as much memory as the screen; what is within more of them is made faint by itself.
constexpr int kMostGroups = 3;

/// A rectangle that can be drawn, as much of it as matters. False for any other.
bool drawable(CGRect &rect) {
  const CGFloat left = rect.origin.x, top = rect.origin.y;
  const CGFloat right = left + rect.size.width, bottom = top + rect.size.height;
  if (!std::isfinite(left) || !std::isfinite(top) || std::isnan(right) || std::isnan(bottom)) return false;
  if (!(rect.size.width > 0) || !(rect.size.height > 0)) return false;
  const auto near = [](CGFloat edge) { return std::clamp(edge, -kFarthest, kFarthest); };
  rect = CGRectMake(near(left), near(top), near(right) - near(left), near(bottom) - near(top));
  return rect.size.width > 0 && rect.size.height > 0;
}

} // namespace

Canvas::Canvas(CGContextRef context, CGFloat scale)
    : context_(context), cairo_(contextOf(context)->cairo.get()), scale_(scale) {}

void Canvas::path(CGRect rect, CGFloat radius) {
  const CGFloat most = std::min(rect.size.width, rect.size.height) / 2;
  const CGFloat corner = radius > 0 ? std::min(radius, most) : 0;
  if (corner == 0) {
    cairo_rectangle(cairo_, rect.origin.x, rect.origin.y, rect.size.width, rect.size.height);
    return;
  }
  const CGFloat left = CGRectGetMinX(rect) + corner, right = CGRectGetMaxX(rect) - corner;
  const CGFloat top = CGRectGetMinY(rect) + corner, bottom = CGRectGetMaxY(rect) - corner;
  cairo_new_sub_path(cairo_);
  cairo_arc(cairo_, right, top, corner, -M_PI_2, 0);
  cairo_arc(cairo_, right, bottom, corner, 0, M_PI_2);
  cairo_arc(cairo_, left, bottom, corner, M_PI_2, M_PI);
  cairo_arc(cairo_, left, top, corner, M_PI, M_PI + M_PI_2);
  cairo_close_path(cairo_);
}

void Canvas::source(Color color) {
  cairo_set_source_rgba(cairo_, color.red, color.green, color.blue, color.alpha * alpha_);
}

void Canvas::fill(CGRect rect, Color color, CGFloat radius) {
  if (!drawable(rect)) return;
  cairo_new_path(cairo_);
  path(rect, radius);
  source(color);
  cairo_fill(cairo_);
}

void Canvas::fill(CGRect rect, UIColor *color, CGFloat radius) {
  CGFloat red = 0, green = 0, blue = 0, alpha = 0;
  if ([color getRed:&red green:&green blue:&blue alpha:&alpha]) {
    fill(rect, Color{red, green, blue, alpha}, radius);
    return;
  }
  if (color == nil || !drawable(rect)) return;
  State state(*this);
  state.clip(rect, radius);
  CGContextSetFillColorWithColor(context_, [color CGColor]);
  CGContextFillRect(context_, rect);
}

void Canvas::stroke(CGRect rect, Color color, CGFloat width, CGFloat radius) {
  if (!drawable(rect)) return;
  cairo_new_path(cairo_);
  path(rect, radius);
  source(color);
  cairo_set_line_width(cairo_, width);
  cairo_stroke(cairo_);
}

void Canvas::shadow(CGRect rect, CGFloat radius) {
  constexpr int kSteps = 12;
  for (int step = kSteps; step > 0; --step)
    fill(CGRectOffset(CGRectInset(rect, -step, -step), 0, 3), Color{0, 0, 0, 0.012}, radius + step);
}

void Canvas::hairline(CGFloat x, CGFloat y, CGFloat width) {
  fill(CGRectMake(x, y, width, 1 / scale_), palette::kSeparator);
}

void Canvas::lines(const std::vector<CGPoint> &points, Color color, CGFloat width) {
  cairo_new_path(cairo_);
  for (const CGPoint &point : points)
    cairo_line_to(cairo_, point.x, point.y);
  source(color);
  cairo_set_line_width(cairo_, width);
  cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(cairo_, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(cairo_);
}

void Canvas::arc(CGPoint center, CGFloat radius, double from, double to, Color color, CGFloat width) {
  cairo_new_path(cairo_);
  cairo_arc(cairo_, center.x, center.y, radius, from, to);
  source(color);
  cairo_set_line_width(cairo_, width);
  cairo_set_line_cap(cairo_, CAIRO_LINE_CAP_ROUND);
  cairo_stroke(cairo_);
}

void Canvas::triangle(CGPoint first, CGPoint second, CGPoint third, Color color) {
  cairo_new_path(cairo_);
  cairo_move_to(cairo_, first.x, first.y);
  cairo_line_to(cairo_, second.x, second.y);
  cairo_line_to(cairo_, third.x, third.y);
  source(color);
  cairo_fill(cairo_);
}

void Canvas::gradient(CGRect rect, Color top, Color bottom) {
  if (!drawable(rect)) return;
  const Pattern pattern(cairo_pattern_create_linear(0, CGRectGetMinY(rect), 0, CGRectGetMaxY(rect)));
  cairo_pattern_add_color_stop_rgba(pattern.get(), 0, top.red, top.green, top.blue, top.alpha * alpha_);
  cairo_pattern_add_color_stop_rgba(pattern.get(), 1, bottom.red, bottom.green, bottom.blue, bottom.alpha * alpha_);
  cairo_new_path(cairo_);
  path(rect, 0);
  cairo_set_source(cairo_, pattern.get());
  cairo_fill(cairo_);
}

void Canvas::text(NSString *string, CGRect rect, const TextStyle &style) {
  if (!drawable(rect)) return;
  const Extent extent = extentOf(style.font);
  const CGFloat lineHeight = extent.above + extent.below;
  const auto room = static_cast<std::size_t>(std::max(rect.size.height / lineHeight, CGFloat{1}));
  const std::vector<Line> set =
      setText(charactersOf(string), style.font, rect.size.width, std::min(style.mostLines, room));
  CGFloat base = CGRectGetMidY(rect) - lineHeight * static_cast<CGFloat>(set.size()) / 2 + extent.above;
  source(style.color);
  for (const Line &line : set) {
    const CGFloat rest = rect.size.width - line.width;
    const CGFloat x = rect.origin.x + (style.alignment == Alignment::kCenter  ? rest / 2
                                       : style.alignment == Alignment::kRight ? rest
                                                                              : 0);
    cairo_save(cairo_);
    cairo_translate(cairo_, x, base);
    for (const Line::Piece &piece : line.pieces) {
      cairo_matrix_t size;
      cairo_font_options_t *const options = cairo_font_options_create();
      cairo_scaled_font_get_font_matrix(piece.font.get(), &size);
      cairo_scaled_font_get_font_options(piece.font.get(), options);
      cairo_set_font_face(cairo_, cairo_scaled_font_get_font_face(piece.font.get()));
      cairo_set_font_matrix(cairo_, &size);
      cairo_set_font_options(cairo_, options);
      cairo_show_glyphs(cairo_, piece.glyphs.data(), static_cast<int>(piece.glyphs.size()));
      cairo_font_options_destroy(options);
    }
    cairo_restore(cairo_);
    base += lineHeight;
  }
}

CGFloat Canvas::height(NSString *string, CGFloat width, const TextStyle &style) {
  const Extent extent = extentOf(style.font);
  return (extent.above + extent.below) *
         static_cast<CGFloat>(setText(charactersOf(string), style.font, width, style.mostLines).size());
}

CGFloat Canvas::width(NSString *string, const Font &font) { return setLine(charactersOf(string), font).width; }

void Canvas::image(UIImage *image, CGRect rect) {
  if (image == nil || !drawable(rect)) return;
  UIGraphicsPushContext(context_);
  [image drawInRect:rect];
  UIGraphicsPopContext();
}

UIImage *Canvas::behind(CGRect rect) {
  if (!drawable(rect)) return nil;
  cairo_matrix_t matrix;
  cairo_get_matrix(cairo_, &matrix);
  // The matrix leads to pixels; an image context is turned upside down twice, so they grow downwards as well.
  const CGRect pixels = CGRectMake(rect.origin.x * matrix.xx + matrix.x0, rect.origin.y * matrix.yy + matrix.y0,
                                   rect.size.width * matrix.xx, rect.size.height * matrix.yy);
  cairo_surface_t *const drawn = contextOf(context_)->surface.get();
  const double width = cairo_image_surface_get_width(drawn), height = cairo_image_surface_get_height(drawn);
  if (pixels.origin.x >= width || pixels.origin.y >= height || CGRectGetMaxX(pixels) <= 0 ||
      CGRectGetMaxY(pixels) <= 0 || pixels.size.width > 2 * width || pixels.size.height > 2 * height)
    return nil;
  UIGraphicsBeginImageContextWithOptions(rect.size, NO, scale_);
  if (const Context *const cut = contextOf(UIGraphicsGetCurrentContext())) {
    cairo_identity_matrix(cut->cairo.get());
    cairo_set_source_surface(cut->cairo.get(), drawn, -std::round(pixels.origin.x), -std::round(pixels.origin.y));
    cairo_paint(cut->cairo.get());
  }
  UIImage *const image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return image;
}

double Canvas::brightness(CGPoint point) {
  double x = point.x, y = point.y;
  cairo_user_to_device(cairo_, &x, &y);
  const auto column = static_cast<int>(x), row = static_cast<int>(y);
  cairo_surface_t *const surface = contextOf(context_)->surface.get();
  if (column < 0 || row < 0 || column >= cairo_image_surface_get_width(surface) ||
      row >= cairo_image_surface_get_height(surface))
    return 1;
  cairo_surface_flush(surface);
  const unsigned char *const pixel = cairo_image_surface_get_data(surface) +
                                     std::ptrdiff_t{row} * cairo_image_surface_get_stride(surface) +
                                     std::ptrdiff_t{column} * 4;
  return (0.0722 * pixel[0] + 0.7152 * pixel[1] + 0.2126 * pixel[2]) / 255;
}

Canvas::State::State(Canvas &canvas) : canvas_(canvas), alphaBefore_(canvas.alpha_) { cairo_save(canvas_.cairo_); }

Canvas::State::~State() {
  if (isGroup_) {
    cairo_pop_group_to_source(canvas_.cairo_);
    cairo_paint_with_alpha(canvas_.cairo_, groupAlpha_);
    --canvas_.groups_;
  }
  canvas_.alpha_ = alphaBefore_;
  cairo_restore(canvas_.cairo_);
}

void Canvas::State::move(CGFloat x, CGFloat y) {
  // A transformation that is no number would end all drawing.
  if (std::isfinite(x) && std::isfinite(y)) cairo_translate(canvas_.cairo_, x, y);
}

void Canvas::State::clip(CGRect rect, CGFloat radius) {
  if (!drawable(rect)) rect = CGRectZero;
  cairo_new_path(canvas_.cairo_);
  canvas_.path(rect, radius);
  cairo_clip(canvas_.cairo_);
}

void Canvas::State::fade(double alpha) {
  if (alpha >= 1 || isGroup_) return;
  if (canvas_.groups_ < kMostGroups) {
    groupAlpha_ = alpha * canvas_.alpha_;
    canvas_.alpha_ = 1;
    isGroup_ = true;
    ++canvas_.groups_;
    cairo_push_group(canvas_.cairo_);
  } else {
    canvas_.alpha_ *= alpha;
  }
}

} // namespace qvdevice
