// An extension's view controller, which lives and draws in a process of its own.
#include "Screen/Scene.h"

#include <algorithm>

namespace qvdevice {

namespace {

/// As large as there is room for, in the middle: the extension's process does not turn with the device.
CGRect fittedInto(CGRect rect, CGSize size) {
  const CGFloat factor = std::min(rect.size.width / size.width, rect.size.height / size.height);
  const CGSize fitted = CGSizeMake(size.width * factor, size.height * factor);
  return CGRectMake(CGRectGetMidX(rect) - fitted.width / 2, CGRectGetMidY(rect) - fitted.height / 2, fitted.width,
                    fitted.height);
}

} // namespace

void drawRemoteView(Scene &scene, CGRect rect) {
  if (scene.extension) {
    scene.canvas.image(scene.extension, fittedInto(rect, [scene.extension size]));
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
