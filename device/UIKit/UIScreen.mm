#import <UIKit/UIKit.h>

#include "container/Settings.h"

namespace {

// From release 8 on the screen turns with what is on it.
bool isTurned() {
  const UIInterfaceOrientation orientation = [[UIApplication sharedApplication] statusBarOrientation];
  return qvdevice::isSystemVersionAtLeast("8") &&
         (orientation == UIInterfaceOrientationLandscapeLeft || orientation == UIInterfaceOrientationLandscapeRight);
}

CGSize upright() {
  const bool pad = [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad;
  return pad ? CGSizeMake(820, 1180) : CGSizeMake(390, 844);
}

} // namespace

@implementation UIScreen

+ (UIScreen *)mainScreen {
  static UIScreen *const screen = [[UIScreen alloc] init];
  return screen;
}

+ (NSArray *)screens {
  return [NSArray arrayWithObject:[self mainScreen]];
}

- (CGRect)bounds {
  const CGSize size = upright();
  return isTurned() ? CGRectMake(0, 0, size.height, size.width) : CGRectMake(0, 0, size.width, size.height);
}

- (CGFloat)scale {
  return [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad ? 2 : 3;
}

- (CGRect)nativeBounds {
  const CGSize points = upright();
  return CGRectMake(0, 0, points.width * [self scale], points.height * [self scale]);
}

@end
