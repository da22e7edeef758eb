#import "Presentation.h"
#import "Rotation.h"
#import "UIViewInternal.h"

#import <QVDevice/QVDevice.h>

#include "container/Settings.h"

NSNotificationName const UIApplicationWillChangeStatusBarOrientationNotification =
    @"UIApplicationWillChangeStatusBarOrientationNotification";
NSNotificationName const UIApplicationDidChangeStatusBarOrientationNotification =
    @"UIApplicationDidChangeStatusBarOrientationNotification";

namespace {

const NSTimeInterval turningTakes = 0.3;

// Turning the device to the left turns what is on it to the right. Lying flat it has no way up.
UIInterfaceOrientation wayUp(UIDeviceOrientation held) {
  switch (held) {
  case UIDeviceOrientationPortrait:
    return UIInterfaceOrientationPortrait;
  case UIDeviceOrientationPortraitUpsideDown:
    return UIInterfaceOrientationPortraitUpsideDown;
  case UIDeviceOrientationLandscapeLeft:
    return UIInterfaceOrientationLandscapeRight;
  case UIDeviceOrientationLandscapeRight:
    return UIInterfaceOrientationLandscapeLeft;
  default:
    return UIInterfaceOrientationUnknown;
  }
}

NSString *nameOf(UIInterfaceOrientation orientation) {
  switch (orientation) {
  case UIInterfaceOrientationPortrait:
    return @"portrait";
  case UIInterfaceOrientationPortraitUpsideDown:
    return @"portraitUpsideDown";
  case UIInterfaceOrientationLandscapeLeft:
    return @"landscapeLeft";
  case UIInterfaceOrientationLandscapeRight:
    return @"landscapeRight";
  case UIInterfaceOrientationUnknown:
    break;
  }
  return @"unknown";
}

UIInterfaceOrientationMask bit(UIInterfaceOrientation orientation) { return 1UL << orientation; }

// What the app says in its Info.plist, of this idiom or of all; every way that the device has where it says nothing.
UIInterfaceOrientationMask listedByApp() {
  const BOOL pad = [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad;
  NSBundle *const bundle = [NSBundle mainBundle];
  id names = pad ? [bundle objectForInfoDictionaryKey:@"UISupportedInterfaceOrientations~ipad"] : nil;
  if (!names) names = [bundle objectForInfoDictionaryKey:@"UISupportedInterfaceOrientations"];
  if (![names isKindOfClass:[NSArray class]])
    return pad ? UIInterfaceOrientationMaskAll : UIInterfaceOrientationMaskAllButUpsideDown;
  NSDictionary *const known = @{
    @"UIInterfaceOrientationPortrait" : @(UIInterfaceOrientationPortrait),
    @"UIInterfaceOrientationPortraitUpsideDown" : @(UIInterfaceOrientationPortraitUpsideDown),
    @"UIInterfaceOrientationLandscapeLeft" : @(UIInterfaceOrientationLandscapeLeft),
    @"UIInterfaceOrientationLandscapeRight" : @(UIInterfaceOrientationLandscapeRight)
  };
  UIInterfaceOrientationMask listed = 0;
  for (id name in names)
    if (NSNumber *const orientation = [known objectForKey:name])
      listed |= bit(static_cast<UIInterfaceOrientation>([orientation integerValue]));
  return listed;
}

} // namespace

@implementation UIApplication (QVDeviceRotation)

- (UIInterfaceOrientationMask)qvdevice_orientationsOfWindow:(UIWindow *)window {
  return [_delegate respondsToSelector:@selector(application:supportedInterfaceOrientationsForWindow:)]
             ? [_delegate application:self supportedInterfaceOrientationsForWindow:window]
             : listedByApp();
}

// The frontmost window of the app's own decides for all: the system's own, such as the keyboard's, follow.
- (UIWindow *)qvdevice_windowThatDecides {
  for (UIWindow *window in [[UIWindow qvdevice_visibleWindows] reverseObjectEnumerator])
    if ([window qvdevice_decidesOnRotation]) return window;
  return nil;
}

- (BOOL)qvdevice_may:(UIViewController *)controller turnTo:(UIInterfaceOrientation)orientation in:(UIWindow *)window {
  if (!qvdevice::isSystemVersionAtLeast("6")) return [controller shouldAutorotateToInterfaceOrientation:orientation];
  if (![controller shouldAutorotate]) return NO;
  const UIInterfaceOrientationMask own = [controller supportedInterfaceOrientations];
  const UIInterfaceOrientationMask ofApp = [self qvdevice_orientationsOfWindow:window];
  if (!(own & ofApp))
    [NSException raise:@"UIApplicationInvalidInterfaceOrientation"
                format:@"Supported orientations has no common orientation with the application, and [%@ "
                       @"shouldAutorotate] is returning YES",
                       NSStringFromClass([controller class])];
  return (own & ofApp & bit(orientation)) != 0;
}

- (void)qvdevice_followDeviceOrientation {
  const UIInterfaceOrientation wanted = wayUp([[UIDevice currentDevice] orientation]);
  if (wanted == UIInterfaceOrientationUnknown || wanted == [self statusBarOrientation]) return;
  UIWindow *const window = [self qvdevice_windowThatDecides];
  UIViewController *const controller = [window qvdevice_controllerThatFillsIt];
  if (!controller) return;
  const BOOL may = [self qvdevice_may:controller turnTo:wanted in:window];
  QVDeviceTrace(@{
    @"kind" : @"rotation",
    @"orientation" : nameOf(wanted),
    @"asked" : NSStringFromClass([controller class]),
    @"allowed" : [NSNumber numberWithBool:may]
  });
  if (may) [self qvdevice_turnTo:wanted];
}

- (void)qvdevice_turnTo:(UIInterfaceOrientation)orientation {
  const UIInterfaceOrientation before = [self statusBarOrientation];
  const CGRect screenBefore = [[UIScreen mainScreen] bounds];
  NSArray *const windows = [UIWindow qvdevice_visibleWindows];
  for (UIWindow *window in windows)
    [[window rootViewController] willRotateToInterfaceOrientation:orientation duration:turningTakes];
  NSNotificationCenter *const center = [NSNotificationCenter defaultCenter];
  [center postNotificationName:UIApplicationWillChangeStatusBarOrientationNotification object:self];
  [self qvdevice_setStatusBarOrientation:orientation];
  const CGRect screen = [[UIScreen mainScreen] bounds];
  // Also those that are hidden at the moment: they are shown the right way up.
  for (UIWindow *window in [self windows])
    if (CGRectEqualToRect([window frame], screenBefore)) [window setFrame:screen];
  [center postNotificationName:UIApplicationDidChangeStatusBarOrientationNotification object:self];
  for (UIWindow *window in windows)
    [[window rootViewController] didRotateFromInterfaceOrientation:before];
}

@end
