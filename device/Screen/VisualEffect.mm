// What lies behind a view, blurred. The device has no blur of its own to draw with: it uses the library's, by name, as
// any code of the app's process could, and without it lays a tint over what lies behind.
#include "Screen/Scene.h"

#import "UIKit/BlurStyle.h"

@interface NSObject (ImageEffects)
+ (UIImage *)imageByApplyingLightEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingExtraLightEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingDarkEffectToImage:(UIImage *)image;
@end

namespace qvdevice {

namespace {

/// Nil when nobody in the process knows that effect, and when there is nothing behind.
UIImage *blurred(Canvas &canvas, CGRect rect, UIBlurEffectStyle style) {
  Class const effects = NSClassFromString(@"UIImageEffects");
  SEL const effect = style == UIBlurEffectStyleDark    ? @selector(imageByApplyingDarkEffectToImage:)
                     : style == UIBlurEffectStyleLight ? @selector(imageByApplyingLightEffectToImage:)
                                                       : @selector(imageByApplyingExtraLightEffectToImage:);
  if (![effects respondsToSelector:effect]) return nil;
  UIImage *const behind = canvas.behind(rect);
  return behind ? [effects performSelector:effect withObject:behind] : nil;
}

constexpr Color tint(UIBlurEffectStyle style) {
  return style == UIBlurEffectStyleDark ? Color{0.11, 0.11, 0.11, 0.85} : Color{0.97, 0.97, 0.97, 0.85};
}

} // namespace

void drawVisualEffect(Scene &scene, UIVisualEffectView *view) {
  if (![[view effect] isKindOfClass:[UIBlurEffect class]]) return;
  const UIBlurEffectStyle style = [(UIBlurEffect *)[view effect] qvdevice_style];
  const CGRect bounds = [view bounds];
  if (UIImage *const image = blurred(scene.canvas, bounds, style))
    scene.canvas.image(image, bounds);
  else
    scene.canvas.fill(bounds, tint(style));
}

} // namespace qvdevice
