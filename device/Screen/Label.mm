#include "Screen/Colors.h"
#include "Screen/Scene.h"

#import "UIKit/FontWeight.h"

#include <algorithm>

namespace qvdevice {

namespace {

// Of a text that may have as many lines as it likes.
constexpr std::size_t kMostLines = 200;
// What is out of range counts as the nearest size that is in it.
constexpr double kSmallest = 1;
constexpr double kLargest = 200;

Weight weightOf(UIFont *font) {
  const UIFontWeight weight = [font qvdevice_weight];
  if (weight >= UIFontWeightBold) return Weight::kBold;
  if (weight >= UIFontWeightSemibold) return Weight::kSemibold;
  return weight >= UIFontWeightMedium ? Weight::kMedium : Weight::kRegular;
}

Alignment alignmentOf(NSTextAlignment alignment) {
  switch (alignment) {
  case NSTextAlignmentCenter:
    return Alignment::kCenter;
  case NSTextAlignmentRight:
    return Alignment::kRight;
  case NSTextAlignmentLeft:
  case NSTextAlignmentNatural:
    break;
  }
  return Alignment::kLeft;
}

} // namespace

void drawLabel(Scene &scene, UILabel *label) {
  UIFont *const font = [label font];
  const NSInteger lines = [label numberOfLines];
  const std::size_t most = lines > 0 ? std::min(static_cast<std::size_t>(lines), kMostLines) : kMostLines;
  scene.canvas.text([label text], [label bounds], {
    .font = {std::clamp([font pointSize], kSmallest, kLargest), weightOf(font)}, .color = colorOf([label textColor]),
    .alignment = alignmentOf([label textAlignment]), .mostLines = most
  });
}

} // namespace qvdevice
