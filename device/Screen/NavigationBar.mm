#include "Screen/Scene.h"

namespace qvdevice {

namespace {

constexpr CGFloat kBarHeight = 44;

CGFloat statusHeight(const Scene &scene) {
  if (scene.isPad) return 24;
  return scene.isLandscape() ? 0 : 47;
}

} // namespace

void drawNavigationBar(Scene &scene, UINavigationController *controller) {
  const CGFloat above = statusHeight(scene);
  const CGRect bar = CGRectMake(0, 0, scene.size.width, above + kBarHeight);
  scene.canvas.fill(bar, palette::kBar);
  scene.canvas.hairline(0, CGRectGetMaxY(bar), bar.size.width);
  const CGRect line = CGRectMake(0, above, bar.size.width, kBarHeight);
  scene.canvas.text([[controller topViewController] title], CGRectInset(line, 90, 0),
                    {.font = {17, Weight::kSemibold}, .alignment = Alignment::kCenter});
  NSArray *const controllers = [controller viewControllers];
  if ([controllers count] < 2) return;
  NSString *const back = [[controllers objectAtIndex:[controllers count] - 2] title];
  const CGFloat middle = CGRectGetMidY(line);
  scene.canvas.lines({CGPointMake(17, middle - 8), CGPointMake(9, middle), CGPointMake(17, middle + 8)}, palette::kTint,
                     2.5);
  scene.canvas.text([back length] ? back : @"Back", CGRectMake(23, above, 100, kBarHeight), {.color = palette::kTint});
}

} // namespace qvdevice
