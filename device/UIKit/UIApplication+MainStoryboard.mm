#import "MainStoryboard.h"

#import <UIKit/UIKit.h>

namespace {

BOOL hasMainStoryboard() {
  NSBundle *const bundle = [NSBundle mainBundle];
  const bool pad = [[UIDevice currentDevice] userInterfaceIdiom] == UIUserInterfaceIdiomPad;
  id name = pad ? [bundle objectForInfoDictionaryKey:@"UIMainStoryboardFile~ipad"] : nil;
  if (!name) name = [bundle objectForInfoDictionaryKey:@"UIMainStoryboardFile"];
  return [name isKindOfClass:[NSString class]] && [name length];
}

} // namespace

@implementation UIApplication (QVDeviceMainStoryboard)

// No storyboard is read: its initial controller is a plain one.
- (UIWindow *)qvdevice_makeStoryboardWindow {
  if (!hasMainStoryboard()) return nil;
  UIWindow *const window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  UIViewController *const root = [[UIViewController alloc] init];
  [window setRootViewController:root];
  [root release];
  if (![_delegate respondsToSelector:@selector(setWindow:)]) {
    NSLog(@"The app delegate must implement the window property if it wants to use a main storyboard file.");
    return nil;
  }
  [_delegate setWindow:window];
  return window;
}

// The app may have put another window in its place while it was launched.
- (void)qvdevice_showStoryboardWindow:(UIWindow *)window {
  if (window && [_delegate respondsToSelector:@selector(window)]) window = [_delegate window];
  [window makeKeyAndVisible];
}

@end
