// An app that asks for its delegate, from its own code and from a library of its own.
#import <UIKit/UIKit.h>
#import <objc/runtime.h>

#import "AskingLibrary.h"
#import "Say.h"

@interface AskingDelegate : NSObject <UIApplicationDelegate>
@end

@implementation AskingDelegate

- (void)ask {
  Say(@"the app's own code is given a %s", object_getClassName([[UIApplication sharedApplication] delegate]));
  Say(@"the app's library is given a %s", ClassOfTheDelegate());
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"didFinishLaunching");
  [self ask];
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"didBecomeActive");
  [self ask];
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"willResignActive");
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"AskingDelegate");
  }
}
