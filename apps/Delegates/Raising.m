// A delegate whose methods raise. Once the app runs it calls each of them itself and catches what comes; from then on
// they raise also when the application calls them, which nobody catches before main.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface RaisingDelegate : NSObject <UIApplicationDelegate> {
  BOOL _raises;
}
@end

@implementation RaisingDelegate

- (void)raiseFrom:(NSString *)method {
  Say(@"%@", method);
  if (_raises) [NSException raise:@"HostException" format:@"%@ failed", method];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  [self performSelector:@selector(callEach) withObject:nil afterDelay:0];
  return YES;
}

- (void)callEach {
  _raises = YES;
  UIApplication *application = [UIApplication sharedApplication];
  for (NSString *method in @[
         @"applicationWillResignActive:", @"applicationDidEnterBackground:", @"applicationWillEnterForeground:",
         @"applicationDidBecomeActive:", @"applicationWillTerminate:"
       ]) {
    @try {
      [self performSelector:NSSelectorFromString(method) withObject:application];
      Say(@"nothing was raised");
    } @catch (NSException *exception) {
      Say(@"caught %@: %@", [exception name], [exception reason]);
    }
  }
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  [self raiseFrom:@"didBecomeActive"];
}

- (void)applicationWillResignActive:(UIApplication *)application {
  [self raiseFrom:@"willResignActive"];
}

- (void)applicationDidEnterBackground:(UIApplication *)application {
  [self raiseFrom:@"didEnterBackground"];
}

- (void)applicationWillEnterForeground:(UIApplication *)application {
  [self raiseFrom:@"willEnterForeground"];
}

- (void)applicationWillTerminate:(UIApplication *)application {
  [self raiseFrom:@"willTerminate"];
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    @try {
      return UIApplicationMain(argc, argv, nil, @"RaisingDelegate");
    } @catch (NSException *exception) {
      Say(@"main caught %@: %@", [exception name], [exception reason]);
      return 0;
    }
  }
}
