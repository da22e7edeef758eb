// An app that puts an instance of a subclass in its delegate's place while it is being launched.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface ParentDelegate : NSObject <UIApplicationDelegate>
@end

@interface HeirDelegate : ParentDelegate
@end

@implementation ParentDelegate

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"%@: willFinishLaunching", [self class]);
  [application setDelegate:[[HeirDelegate alloc] init]]; // lives as long as the process
  return YES;
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"%@: didFinishLaunching", [self class]);
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"%@: didBecomeActive, as it inherits it", [self class]);
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"%@: willResignActive, the parent's part", [self class]);
}

@end

@implementation HeirDelegate

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"%@: willResignActive, its own part", [self class]);
  [super applicationWillResignActive:application];
}

// The parent has no such method.
- (void)applicationDidEnterBackground:(UIApplication *)application {
  Say(@"%@: didEnterBackground", [self class]);
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"ParentDelegate");
  }
}
