#include "Screen/Scene.h"

#include <array>
#include <cmath>

namespace qvdevice {

namespace {

void drawSignal(Canvas &canvas, CGFloat x, CGFloat base, Color color) {
  constexpr std::array<CGFloat, 4> kHeights{4, 6, 8.5, 11};
  for (const CGFloat height : kHeights) {
    canvas.fill(CGRectMake(x, base - height, 3, height), color, 0.8);
    x += 4.7;
  }
}

void drawWireless(Canvas &canvas, CGFloat x, CGFloat base, Color color) {
  const CGPoint foot = CGPointMake(x + 8, base - 1.5);
  for (const CGFloat radius : {2.0, 5.4, 8.8})
    canvas.arc(foot, radius, -M_PI_4 * 3, -M_PI_4, color, 2);
}

void drawBattery(Canvas &canvas, CGFloat x, CGFloat base, Color color) {
  const CGRect shell = CGRectMake(x, base - 11.5, 24, 12);
  canvas.stroke(shell, color.faded(0.4), 1, 3.6);
  canvas.fill(CGRectInset(shell, 2, 2), color, 2);
  canvas.fill(CGRectMake(CGRectGetMaxX(shell) + 1.5, CGRectGetMidY(shell) - 2, 1.5, 4), color.faded(0.5), 0.75);
}

} // namespace

void drawStatusBar(Scene &scene) {
  // A phone that lies on its side shows none.
  if (!scene.isPad && scene.isLandscape()) return;
  Canvas &canvas = scene.canvas;
  const CGFloat right = scene.size.width, base = scene.isPad ? 18 : 33;
  const Color color = canvas.brightness(CGPointMake(4, 4)) > 0.5 ? palette::kLabel : palette::kWhite;
  const CGFloat size = scene.isPad ? 14 : 17;
  const CGFloat x = scene.isPad ? 20 : 24;
  canvas.text(@"9:41", CGRectMake(x, base - 16, 80, 20),
              {.font = {size, Weight::kSemibold},
               .color = color,
               .alignment = scene.isPad ? Alignment::kLeft : Alignment::kCenter});
  if (!scene.isPad) drawSignal(canvas, right - 92, base, color);
  drawWireless(canvas, right - 70, base, color);
  drawBattery(canvas, right - 47, base, color);
}

void drawHomeIndicator(Scene &scene) {
  const CGFloat width = scene.isPad ? 250 : scene.isLandscape() ? 234 : 134;
  const CGFloat y = scene.size.height - 13;
  const CGPoint beside = CGPointMake((scene.size.width - width) / 2 - 6, y + 2);
  scene.canvas.fill(CGRectMake((scene.size.width - width) / 2, y, width, 5),
                    scene.canvas.brightness(beside) > 0.5 ? palette::kLabel : palette::kWhite, 2.5);
}

} // namespace qvdevice
