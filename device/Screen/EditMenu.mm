// The callout bar over what is selected.
#include "Screen/Scene.h"
#include "Screen/Selection.h"

#import "UIKit/FirstResponder.h"
#import "UIKit/UICalloutBar.h"

#include <algorithm>
#include <vector>

namespace qvdevice {

namespace {

constexpr CGFloat kHeight = 38, kArrow = 8, kEdge = 8, kPadding = 14, kUppermost = 44;
constexpr Color kBackground{0.15, 0.15, 0.16};
constexpr Font kFont{15};

/// What is selected, on the screen.
CGRect selectedOnScreen(Scene &scene) {
  UIResponder *const first = [UIResponder qvdevice_firstResponder];
  if (![first isKindOfClass:[UIView class]]) return CGRectMake(scene.size.width / 2, scene.size.height / 2, 0, 0);
  UIView *const view = (UIView *)first;
  CGRect place = [view isKindOfClass:[UITextField class]] ? placeOfSelection((UITextField *)view) : [view bounds];
  place = [view convertRect:place toView:nil];
  const CGPoint window = [[view window] frame].origin;
  return CGRectOffset(place, window.x, window.y);
}

} // namespace

void drawEditMenu(Scene &scene) {
  if (![[UIMenuController sharedMenuController] isMenuVisible]) return;
  NSArray *const entries = [[UICalloutBar sharedCalloutBar] entries];
  std::vector<CGFloat> widths;
  CGFloat whole = 0;
  for (UIMenuItem *entry in entries) {
    widths.push_back(Canvas::width([entry title], kFont) + 2 * kPadding);
    whole += widths.back();
  }
  whole = std::min(whole, scene.size.width - 2 * kEdge);
  const CGRect over = selectedOnScreen(scene);
  const CGFloat middle =
      std::clamp(CGRectGetMidX(over), kEdge + 20, std::max(kEdge + 20, scene.size.width - kEdge - 20));
  const CGFloat left = std::clamp(middle - whole / 2, kEdge, std::max(kEdge, scene.size.width - kEdge - whole));
  const bool isAbove = over.origin.y - kHeight - kArrow >= kUppermost;
  const CGFloat top = isAbove ? over.origin.y - kHeight - kArrow : CGRectGetMaxY(over) + kArrow;
  const CGRect bar = CGRectMake(left, top, whole, kHeight);
  Canvas &canvas = scene.canvas;
  canvas.shadow(bar, 9);
  canvas.fill(bar, kBackground, 9);
  const CGFloat edge = isAbove ? CGRectGetMaxY(bar) : top;
  canvas.triangle(CGPointMake(middle - kArrow, edge), CGPointMake(middle + kArrow, edge),
                  CGPointMake(middle, isAbove ? edge + kArrow : edge - kArrow), kBackground);
  CGFloat x = left;
  for (std::size_t index = 0; index < widths.size() && x < CGRectGetMaxX(bar); ++index) {
    canvas.text([[entries objectAtIndex:index] title], CGRectMake(x, top, widths[index], kHeight),
                {.font = kFont, .color = palette::kWhite, .alignment = Alignment::kCenter});
    x += widths[index];
    if (index + 1 < widths.size()) canvas.fill(CGRectMake(x, top, 0.5, kHeight), Color{1, 1, 1, 0.25});
  }
}

} // namespace qvdevice
