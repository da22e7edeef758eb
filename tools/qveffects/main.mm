// qveffects OUTPUT [IMAGE]: the library's five looks beside the original, as one PNG. What goes wrong is said on
// standard output, since standard error is the library's to capture.
#import "ContactSheet.h"
#import "SamplePicture.h"

#include <cstdio>

@interface NSObject (UIImageEffects)
+ (UIImage *)imageByApplyingLightEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingExtraLightEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingDarkEffectToImage:(UIImage *)image;
+ (UIImage *)imageByApplyingTintEffectWithColor:(UIColor *)color toImage:(UIImage *)image;
+ (UIImage *)imageByApplyingBlurToImage:(UIImage *)image
                             withRadius:(CGFloat)radius
                              tintColor:(UIColor *)tintColor
                  saturationDeltaFactor:(CGFloat)factor
                              maskImage:(UIImage *)mask;
@end

namespace {

int fails(const char *why) {
  std::puts(why);
  return 1;
}

std::vector<Panel> panelsOf(UIImage *image) {
  const Class effects = NSClassFromString(@"UIImageEffects");
  UIColor *const blue = [UIColor colorWithRed:0.10 green:0.35 blue:0.85 alpha:1];
  return {{image, "original"},
          {[effects imageByApplyingLightEffectToImage:image], "light"},
          {[effects imageByApplyingExtraLightEffectToImage:image], "extra light"},
          {[effects imageByApplyingDarkEffectToImage:image], "dark"},
          {[effects imageByApplyingTintEffectWithColor:blue toImage:image], "tint"},
          {[effects imageByApplyingBlurToImage:image withRadius:20 tintColor:nil saturationDeltaFactor:1 maskImage:nil],
           "blur 20"}};
}

} // namespace

int main(int argc, char *argv[]) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  if (argc < 2) return fails("usage: qveffects OUTPUT [IMAGE]");
  UIImage *const image =
      argc < 3 ? samplePicture() : [UIImage imageWithContentsOfFile:[NSString stringWithUTF8String:argv[2]]];
  if (image == nil) return fails("the image cannot be read");
  const std::vector<Panel> panels = panelsOf(image);
  for (const Panel &panel : panels) {
    if (panel.image == nil) return fails("the image is too small or too large for the effects, or there is no memory");
  }
  NSData *const sheet = UIImagePNGRepresentation(contactSheet(panels));
  if (![sheet writeToFile:[NSString stringWithUTF8String:argv[1]] atomically:NO]) {
    return fails("the sheet cannot be written");
  }
  [pool drain];
  return 0;
}
