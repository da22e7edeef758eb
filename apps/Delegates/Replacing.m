// An app that replaces its delegate once it has been launched.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface FirstDelegate : NSObject <UIApplicationDelegate> {
  id<UIApplicationDelegate> _second;
}
@end

@interface SecondDelegate : NSObject <UIApplicationDelegate>
@end

@implementation FirstDelegate

- (void)dealloc {
  [_second release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"first: didFinishLaunching");
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"first: didBecomeActive");
  if (_second) return;
  _second = [[SecondDelegate alloc] init];
  [application setDelegate:_second];
  Say(@"first: the delegate is %@", [(id)[application delegate] class]);
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"first: willResignActive; the delegate is %@", [(id)[application delegate] class]);
}

- (void)applicationWillTerminate:(UIApplication *)application {
  Say(@"first: willTerminate");
}

- (NSString *)zorbelConfigChangedTo:(NSDictionary *)config {
  Say(@"first: zorbelConfigChangedTo %@", OnOneLine(config));
  return nil;
}

@end

@implementation SecondDelegate

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"second: didBecomeActive");
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"second: willResignActive; the delegate is %@", [(id)[application delegate] class]);
}

- (void)applicationWillTerminate:(UIApplication *)application {
  Say(@"second: willTerminate");
}

- (NSString *)zorbelConfigChangedTo:(NSDictionary *)config {
  Say(@"second: zorbelConfigChangedTo %@", OnOneLine(config));
  return nil;
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"FirstDelegate");
  }
}
