#include "Screen/Colors.h"
#include "Screen/Scene.h"

namespace qvdevice {

namespace {

constexpr double kPressed = 0.3;
constexpr double kDark = 0.6;

bool isDark(UIColor *color) {
  CGFloat white = 1, alpha = 0;
  return [color getWhite:&white alpha:&alpha] && alpha > 0.5 && white < kDark;
}

Color titleColor(UIButton *button) {
  UIColor *const own = [button titleColorForState:[button state]];
  const Color usual = own                                         ? colorOf(own)
                      : isDark([button backgroundColor])          ? palette::kWhite
                      : [button buttonType] == UIButtonTypeSystem ? palette::kTint
                                                                  : palette::kLabel;
  if (![button isEnabled]) return palette::kPlaceholder;
  return [button isHighlighted] ? usual.faded(kPressed) : usual;
}

} // namespace

void drawButton(Scene &scene, UIButton *button) {
  const bool isKey = [[button currentTitle] length] == 1;
  scene.canvas.text([button currentTitle], [button bounds], {
    .font = {isKey ? 28.0 : 17.0, isKey ? Weight::kRegular : Weight::kMedium}, .color = titleColor(button),
    .alignment = Alignment::kCenter
  });
}

} // namespace qvdevice
