#include "Screen/Scene.h"

#import <QuartzCore/CALayer.h>

#import "UIKit/SystemWindows.h"
#import "UIKit/UIRemoteViewController.h"

#include <cmath>

namespace qvdevice {

namespace {

// What is fainter than this is not seen.
constexpr CGFloat kFaintest = 0.01;
// What lies deeper than this in a tree is not drawn.
constexpr int kDeepest = 500;
// Nor what is farther from the screen than this, in points.
constexpr CGFloat kFarthest = 100000;

bool isNear(CGPoint point) { return std::abs(point.x) < kFarthest && std::abs(point.y) < kFarthest; }

UIViewController *controllerOf(UIView *view) {
  UIResponder *const next = [view nextResponder];
  return [next isKindOfClass:[UIViewController class]] && [(UIViewController *)next view] == view
             ? (UIViewController *)next
             : nil;
}

/// Whether the view draws all that is in it.
bool drawContent(Scene &scene, UIView *view) {
  if ([view isKindOfClass:[UILabel class]]) {
    drawLabel(scene, (UILabel *)view);
  } else if ([view isKindOfClass:[UIButton class]]) {
    drawButton(scene, (UIButton *)view);
  } else if ([view isKindOfClass:[UITextField class]]) {
    drawTextField(scene, (UITextField *)view);
  } else if ([view isKindOfClass:[UIVisualEffectView class]]) {
    drawVisualEffect(scene, (UIVisualEffectView *)view);
  } else if ([view isKindOfClass:[UITextEffectsWindow class]]) {
    drawKeyboard(scene);
  }
  return [view isKindOfClass:[UIButton class]];
}

void drawAbove(Scene &scene, UIView *view) {
  UIViewController *const controller = controllerOf(view);
  if ([controller isKindOfClass:[UINavigationController class]])
    drawNavigationBar(scene, (UINavigationController *)controller);
  else if ([controller isKindOfClass:[UIActivityViewController class]])
    drawShareSheet(scene, (UIActivityViewController *)controller);
  else if ([controller isKindOfClass:[_UIRemoteViewController class]])
    drawRemoteView(scene, [view bounds]);
}

void draw(Scene &scene, UIView *view, int depth) {
  const CGFloat alpha = [view alpha];
  const CGRect frame = [view frame];
  const CGPoint inner = [view bounds].origin;
  if ([view isHidden] || !(alpha >= kFaintest) || depth > kDeepest || !isNear(frame.origin) || !isNear(inner)) return;
  Canvas::State state(scene.canvas);
  state.fade(alpha);
  state.move(frame.origin.x, frame.origin.y);
  scene.canvas.fill(CGRectMake(0, 0, frame.size.width, frame.size.height), [view backgroundColor],
                    [[view layer] cornerRadius]);
  state.move(-inner.x, -inner.y);
  if (!drawContent(scene, view)) {
    for (UIView *subview in [view subviews])
      draw(scene, subview, depth + 1);
  }
  drawAbove(scene, view);
}

} // namespace

void drawView(Scene &scene, UIView *view) { draw(scene, view, 0); }

} // namespace qvdevice
