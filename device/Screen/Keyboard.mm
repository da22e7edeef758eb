#include "Screen/Scene.h"

#import "UIKit/InputModes.h"

#include <array>
#include <string_view>

namespace qvdevice {

namespace {

constexpr Color kBackground{0.82, 0.835, 0.86};
constexpr Color kSpecial{0.67, 0.69, 0.73};
constexpr CGFloat kRadius = 5;

void drawKey(Canvas &canvas, CGRect rect, NSString *title, Color color, CGFloat size) {
  canvas.fill(CGRectOffset(rect, 0, 1), Color{0.53, 0.54, 0.56}, kRadius);
  canvas.fill(rect, color, kRadius);
  canvas.text(title, rect, {.font = {size}, .alignment = Alignment::kCenter});
}

void drawLetters(Canvas &canvas, CGRect row, std::string_view letters, CGFloat keyWidth, CGFloat gap) {
  const auto count = static_cast<CGFloat>(letters.size());
  CGFloat x = CGRectGetMidX(row) - (keyWidth * count + gap * (count - 1)) / 2;
  for (const char letter : letters) {
    drawKey(canvas, CGRectMake(x, row.origin.y, keyWidth, row.size.height), [NSString stringWithFormat:@"%c", letter],
            palette::kWhite, 22);
    x += keyWidth + gap;
  }
}

void drawKeys(Canvas &canvas, CGRect area) {
  const CGFloat gap = 6, side = 3;
  const CGFloat rowStep = area.size.height / 4, keyHeight = rowStep - 11;
  const CGFloat keyWidth = (area.size.width - 2 * side - 9 * gap) / 10;
  const auto row = [&](int index) {
    return CGRectMake(side, area.origin.y + rowStep * index, area.size.width - 2 * side, keyHeight);
  };
  drawLetters(canvas, row(0), "qwertyuiop", keyWidth, gap);
  drawLetters(canvas, row(1), "asdfghjkl", keyWidth, gap);
  drawLetters(canvas, row(2), "zxcvbnm", keyWidth, gap);
  const CGFloat special = keyWidth * 1.35;
  drawKey(canvas, CGRectMake(side, row(2).origin.y, special, keyHeight), @"⇧", kSpecial, 18);
  drawKey(canvas, CGRectMake(CGRectGetMaxX(row(2)) - special, row(2).origin.y, special, keyHeight), @"⌫", kSpecial, 18);
  const CGFloat wide = keyWidth * 2.6, y = row(3).origin.y;
  drawKey(canvas, CGRectMake(side, y, wide, keyHeight), @"123", kSpecial, 16);
  drawKey(canvas, CGRectMake(CGRectGetMaxX(row(3)) - wide, y, wide, keyHeight), @"return", kSpecial, 16);
  drawKey(canvas, CGRectMake(side + wide + gap, y, row(3).size.width - 2 * (wide + gap), keyHeight), @"space",
          palette::kWhite, 16);
}

void drawVoice(Canvas &canvas, CGRect area) {
  constexpr std::array<CGFloat, 15> kHeights{6, 12, 22, 14, 30, 46, 34, 58, 38, 50, 28, 18, 26, 12, 6};
  CGFloat x = CGRectGetMidX(area) - kHeights.size() * 4.5;
  const CGFloat middle = CGRectGetMidY(area) - 14;
  for (const CGFloat height : kHeights) {
    canvas.fill(CGRectMake(x, middle - height / 2, 4, height), palette::kTint, 2);
    x += 9;
  }
  canvas.text(@"Dictation", CGRectMake(area.origin.x, middle + 44, area.size.width, 22),
              {.font = {15}, .color = palette::kSecondaryLabel, .alignment = Alignment::kCenter});
}

} // namespace

void drawKeyboard(Scene &scene) {
  const CGFloat keys = scene.isLandscape() && !scene.isPad ? 162 : scene.isPad ? 264 : 216;
  const CGRect board = CGRectMake(0, scene.size.height - keys - kHomeArea, scene.size.width, keys + kHomeArea);
  scene.canvas.fill(board, kBackground);
  const CGRect area = CGRectMake(0, board.origin.y + 9, board.size.width, keys - 9);
  if ([UITextInputMode qvdevice_isDictating])
    drawVoice(scene.canvas, area);
  else
    drawKeys(scene.canvas, area);
}

} // namespace qvdevice
