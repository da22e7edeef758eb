#include "Screen/Picture.h"

#include "Screen/Scene.h"

#import "UIKit/ExtensionRoot.h"
#import "UIKit/FirstResponder.h"
#import "UIKit/OpenInMenu.h"
#import "UIKit/SystemWindows.h"
#import "UIKit/UIViewInternal.h"

#include <string>

namespace {

using namespace qvdevice;

/// Ends the image whatever happens.
class ImageContext {
public:
  ImageContext(CGSize size, BOOL opaque, CGFloat scale) { UIGraphicsBeginImageContextWithOptions(size, opaque, scale); }
  ~ImageContext() { UIGraphicsEndImageContext(); }
  ImageContext(const ImageContext &) = delete;
  ImageContext &operator=(const ImageContext &) = delete;
};

UIWindow *windowOfFirstResponder() {
  UIResponder *const first = [UIResponder qvdevice_firstResponder];
  return [first isKindOfClass:[UIView class]] ? [(UIView *)first window] : nil;
}

/// Whether what is being edited is what the user has before him: what is presented above it, and a window that has
/// become key instead, take keyboard and edit menu away as long as they are there.
bool isEditedInFront(UIWindow *edited) {
  if (edited != [UIWindow qvdevice_keyWindow]) return false;
  UIViewController *controller = [edited rootViewController];
  if (![controller presentedViewController]) return true;
  while ([controller presentedViewController])
    controller = [controller presentedViewController];
  return [(UIView *)[UIResponder qvdevice_firstResponder] isDescendantOfView:[controller view]];
}

void drawWindows(Scene &scene) {
  NSArray *const windows = [UIWindow qvdevice_visibleWindows];
  UIWindow *const edited = windowOfFirstResponder(), *const key = [UIWindow qvdevice_keyWindow];
  const bool isEditing = edited && isEditedInFront(edited);
  for (UIWindow *window in windows) {
    if (isEditing || ![window isKindOfClass:[UITextEffectsWindow class]]) drawView(scene, window);
    if (isEditing && window == edited) drawEditMenu(scene);
    if (window == key) drawOpenInMenu(scene);
  }
  drawStatusBar(scene);
}

void drawApp(Scene &scene, UIApplication *application) {
  if ([application applicationState] == UIApplicationStateBackground) {
    drawHomeScreen(scene);
    drawStatusBar(scene);
    return;
  }
  scene.canvas.fill(scene.bounds(), palette::kWhite);
  drawWindows(scene);
  drawHomeIndicator(scene);
}

void drawExtension(Scene &scene) {
  for (UIWindow *window in [UIWindow qvdevice_visibleWindows])
    drawView(scene, window);
}

} // namespace

UIImage *QVDeviceDrawScreen(UIApplication *application, UIImage *extension, CGFloat scale, NSString **problem) {
  if (const std::string file = missingTypeface(); !file.empty()) {
    *problem = [NSString stringWithFormat:@"the typeface %s is not there", file.c_str()];
    return nil;
  }
  for (UIWindow *window in [UIWindow qvdevice_visibleWindows])
    [window layoutIfNeeded];
  const CGSize size = [[UIScreen mainScreen] bounds].size;
  const bool isExtension = QVDeviceExtensionRoot() != nil;
  const ImageContext context(size, !isExtension, scale);
  UIImage *image = nil;
  if (UIGraphicsGetCurrentContext()) {
    Canvas canvas(UIGraphicsGetCurrentContext(), scale);
    Scene scene{canvas, size, [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad, extension};
    if (isExtension)
      drawExtension(scene);
    else
      drawApp(scene, application);
    image = UIGraphicsGetImageFromCurrentImageContext();
  }
  if (!image) *problem = @"there is no memory for the picture";
  return image;
}
