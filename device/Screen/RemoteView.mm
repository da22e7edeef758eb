// An extension's view controller, which lives and draws in a process of its own.
#include "Screen/Scene.h"

namespace qvdevice {

void drawRemoteView(Scene &scene, CGRect rect) {
  if (scene.extension) {
    scene.canvas.image(scene.extension, rect);
    return;
  }
  constexpr CGFloat kWidth = 250, kHeight = 88;
  const CGRect box = CGRectMake(CGRectGetMidX(rect) - kWidth / 2, CGRectGetMidY(rect) - kHeight / 2, kWidth, kHeight);
  scene.canvas.fill(box, Color{0.56, 0.56, 0.58}, 14);
  scene.canvas.text(
      @"The extension does not answer", CGRectInset(box, 16, 8),
      {.font = {15, Weight::kMedium}, .color = palette::kWhite, .alignment = Alignment::kCenter, .mostLines = 2});
}

} // namespace qvdevice
