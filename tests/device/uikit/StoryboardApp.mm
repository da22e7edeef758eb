// An app with a main storyboard. STORYBOARD_DELEGATE names the delegate's class.

#import <UIKit/UIKit.h>

#include <cstdio>
#include <cstdlib>

namespace {

void say(const char *what, UIWindow *window) {
  UIViewController *const root = [window rootViewController];
  std::printf("%s: %s, %s, root %s\n", what, window ? "a window" : "no window",
              [window isKeyWindow] && ![window isHidden] ? "shown" : "not shown",
              root ? [NSStringFromClass([root class]) UTF8String] : "none");
  std::fflush(stdout);
}

} // namespace

// Without a window of its own.
@interface BareDelegate : NSObject <UIApplicationDelegate>
@end

@implementation BareDelegate
- (void)applicationDidBecomeActive:(UIApplication *)application {
  say("active", [application keyWindow]);
}
@end

@interface WindowDelegate : BareDelegate {
  UIWindow *_window;
}
@end

@implementation WindowDelegate

- (UIWindow *)window {
  return _window;
}

- (void)setWindow:(UIWindow *)window {
  [window retain];
  [_window release];
  _window = window;
}

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options {
  (void)application;
  (void)options;
  say("will finish launching", _window);
  return YES;
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  (void)application;
  (void)options;
  say("did finish launching", _window);
  return YES;
}

@end

// Puts a window of its own in the storyboard's place.
@interface ReplacingDelegate : WindowDelegate
@end

@implementation ReplacingDelegate

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  (void)application;
  (void)options;
  UIWindow *const own = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  [own setRootViewController:[[[UINavigationController alloc] init] autorelease]];
  [self setWindow:own];
  return YES;
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, [NSString stringWithUTF8String:std::getenv("STORYBOARD_DELEGATE")]);
  }
}
