// An app that carries a library which watches it. Linked to the app, the library is loaded before main; with
// WATCHED_LIBRARY defined it is loaded by main.
#import <UIKit/UIKit.h>

#import "Say.h"

#include <dlfcn.h>

@interface WatchedDelegate : NSObject <UIApplicationDelegate>
@end

@implementation WatchedDelegate

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"app: didFinishLaunching");
  UIWindow *window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  window.rootViewController = [[[UIViewController alloc] init] autorelease];
  [window makeKeyAndVisible];
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"app: didBecomeActive");
  [application openURL:[NSURL URLWithString:@"https://www.example.com/used"]];
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"app: willResignActive");
}

// No applicationDidEnterBackground:, so that whoever watches has to bring one along.

@end

/// An application that sees its events too.
@interface WatchedApplication : UIApplication
@end

@implementation WatchedApplication

- (void)sendEvent:(UIEvent *)event {
  Say(@"app: sendEvent:");
  [super sendEvent:event];
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
#ifdef WATCHED_LIBRARY
    NSString *library = [[[NSBundle mainBundle] bundlePath] stringByAppendingPathComponent:@WATCHED_LIBRARY];
    if (!dlopen([library fileSystemRepresentation], RTLD_NOW)) Say(@"%s", dlerror());
#endif
    return UIApplicationMain(argc, argv, @"WatchedApplication", @"WatchedDelegate");
  }
}
