#pragma once

#import <UIKit/UIKit.h>

#include <cairo.h>

#include "Screen/Palette.h"
#include "Screen/Text.h"

namespace qvdevice {

enum class Alignment { kLeft, kCenter, kRight };

/// How a text looks that is laid into a rectangle; it stands in the middle of its height.
struct TextStyle {
  Font font{};
  Color color = palette::kLabel;
  Alignment alignment = Alignment::kLeft;
  std::size_t mostLines = 1;
};

/// What is drawn on: points, growing to the right and downwards. What is no rectangle, or lies so far away that nobody
/// could see it, is not drawn. Main thread.
class Canvas {
public:
  /// The context is that of an image, begun with UIGraphicsBeginImageContextWithOptions; it is not NULL, and outlives
  /// the canvas.
  Canvas(CGContextRef context, CGFloat scale);
  Canvas(const Canvas &) = delete;
  Canvas &operator=(const Canvas &) = delete;

  void fill(CGRect rect, Color color, CGFloat radius = 0);
  /// With one of the device's own colours, patterns included.
  void fill(CGRect rect, UIColor *color, CGFloat radius = 0);
  void stroke(CGRect rect, Color color, CGFloat width, CGFloat radius = 0);
  /// A soft shadow around a rounded rectangle that is to be filled.
  void shadow(CGRect rect, CGFloat radius);
  /// One pixel of the screen wide, from the start along the upper edge.
  void hairline(CGFloat x, CGFloat y, CGFloat width);
  /// Lines from point to point, with round ends.
  void lines(const std::vector<CGPoint> &points, Color color, CGFloat width);
  void arc(CGPoint center, CGFloat radius, double from, double to, Color color, CGFloat width);
  void triangle(CGPoint first, CGPoint second, CGPoint third, Color color);
  void gradient(CGRect rect, Color top, Color bottom);

  void text(NSString *string, CGRect rect, const TextStyle &style);
  /// The height that the text takes at that width.
  static CGFloat height(NSString *string, CGFloat width, const TextStyle &style);
  static CGFloat width(NSString *string, const Font &font);

  void image(UIImage *image, CGRect rect);

  /// What was drawn so far in the rectangle, which is in the coordinates of the canvas as they are now; nil when that
  /// is nothing. What is being drawn into a group of its own is not in it.
  UIImage *behind(CGRect rect);
  /// How bright what was drawn so far is at a place, from 0 to 1.
  double brightness(CGPoint point);

  /// Restores what it found when it goes: coordinates, clipping, and the group that `fade` has begun.
  class State {
  public:
    explicit State(Canvas &canvas);
    ~State();
    State(const State &) = delete;
    State &operator=(const State &) = delete;
    void move(CGFloat x, CGFloat y);
    void clip(CGRect rect, CGFloat radius = 0);
    /// All that is drawn from now on is as faint as that.
    void fade(double alpha);

  private:
    Canvas &canvas_;
    double alphaBefore_;
    double groupAlpha_ = 1;
    bool isGroup_ = false;
  };

private:
  void path(CGRect rect, CGFloat radius);
  void source(Color color);

  CGContextRef context_;
  cairo_t *cairo_;
  CGFloat scale_;
  double alpha_ = 1; // of what is not in a group
  int groups_ = 0;
};

} // namespace qvdevice
