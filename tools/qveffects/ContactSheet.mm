#import "ContactSheet.h"

#import "Letters.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr size_t kColumns = 3;
constexpr CGFloat kLongestSide = 420;
constexpr CGFloat kMargin = 20;
constexpr CGFloat kDot = 2;
constexpr CGFloat kLabelHeight = 30;
constexpr CGFloat kSmallestWidth = 150; // for the longest label

/// A chequered ground shows what is clear.
void drawGround(CGRect rect) {
  constexpr CGFloat kField = 8;
  [[UIColor whiteColor] set];
  UIRectFill(rect);
  [[UIColor colorWithWhite:0.85 alpha:1] set];
  for (CGFloat y = 0; y < rect.size.height; y += kField) {
    for (CGFloat x = std::fmod(y, 2 * kField); x < rect.size.width; x += 2 * kField) {
      UIRectFill(CGRectMake(rect.origin.x + x, rect.origin.y + y, std::min(kField, rect.size.width - x),
                            std::min(kField, rect.size.height - y)));
    }
  }
}

void drawPanel(const Panel &panel, CGPoint at, CGSize size) {
  const CGRect rect = CGRectMake(at.x, at.y, size.width, size.height);
  drawGround(rect);
  [panel.image drawInRect:rect];
  [[UIColor colorWithWhite:0.15 alpha:1] set];
  drawText(panel.label, CGPointMake(at.x, at.y + size.height + 8), kDot);
}

} // namespace

UIImage *contactSheet(const std::vector<Panel> &panels) {
  // Pixels, not points: what is to be looked at are the pixels.
  CGImageRef first = [panels.front().image CGImage];
  const auto width = static_cast<CGFloat>(CGImageGetWidth(first));
  const auto height = static_cast<CGFloat>(CGImageGetHeight(first));
  const CGFloat smaller = std::min(1.0, kLongestSide / std::max(width, height));
  const CGSize size =
      CGSizeMake(std::max(1.0, std::round(width * smaller)), std::max(1.0, std::round(height * smaller)));
  const CGSize cell = CGSizeMake(std::max(size.width, kSmallestWidth) + kMargin, size.height + kLabelHeight + kMargin);
  const auto rows = static_cast<CGFloat>((panels.size() + kColumns - 1) / kColumns);
  const CGRect sheet = CGRectMake(0, 0, kColumns * cell.width + kMargin, rows * cell.height + kMargin);
  UIGraphicsBeginImageContextWithOptions(sheet.size, YES, 1);
  [[UIColor colorWithWhite:0.95 alpha:1] set];
  UIRectFill(sheet);
  for (size_t index = 0; index < panels.size(); ++index) {
    const CGPoint at = CGPointMake(kMargin + static_cast<CGFloat>(index % kColumns) * cell.width,
                                   kMargin + static_cast<CGFloat>(index / kColumns) * cell.height);
    drawPanel(panels[index], at, size);
  }
  UIImage *const made = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return made;
}
