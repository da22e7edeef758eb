// An app that is taken through its launch and a few events, and says what it hears of them. It may carry another
// library that watches the application, too.
#import <UIKit/UIKit.h>

#include <stdio.h>

@interface QVCarryingDelegate : UIResponder <UIApplicationDelegate>
@end
@implementation QVCarryingDelegate
- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  printf("host application:didFinishLaunchingWithOptions:\n");
  return YES;
}
- (void)applicationDidBecomeActive:(UIApplication *)application {
  printf("host applicationDidBecomeActive:\n");
}
@end

@interface QVCarryingWindow : UIWindow
@end
@implementation QVCarryingWindow
- (void)sendEvent:(UIEvent *)event {
  printf("host sendEvent:\n");
}
@end

// A touch of that window.
@interface QVCarryingTouch : UITouch
@end
@implementation QVCarryingTouch
- (UIWindow *)window {
  return [[UIApplication sharedApplication] keyWindow];
}
@end
@interface QVCarryingEvent : UIEvent
@end
@implementation QVCarryingEvent
- (NSSet *)allTouches {
  return [NSSet setWithObject:[[[QVCarryingTouch alloc] init] autorelease]];
}
@end

int main(void) {
  setvbuf(stdout, NULL, _IONBF, 0); // what is said and what is traced stay in order
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  UIApplication *const application = [[UIApplication alloc] init];
  QVCarryingDelegate *const delegate = [[QVCarryingDelegate alloc] init];
  [application setDelegate:delegate];
  [delegate application:application didFinishLaunchingWithOptions:nil];
  [delegate applicationDidBecomeActive:application];
  UIWindow *const window = [[QVCarryingWindow alloc] init];
  [window makeKeyAndVisible];
  [application sendEvent:[[[QVCarryingEvent alloc] init] autorelease]];
  [application openURL:[NSURL URLWithString:@"https://example.com/a"]];
  printf("host asks for its delegate\n");
  printf("host has %s delegate\n", [application delegate] == delegate ? "its own" : "another");
  [pool drain];
  return 0;
}
