// An app whose delegate is a proxy for another object.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface ProxiedDelegate : NSObject <UIApplicationDelegate>
@end

@implementation ProxiedDelegate

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"didFinishLaunching");
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"didBecomeActive; the delegate is %@a proxy", [(id)[application delegate] isProxy] ? @"" : @"not ");
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"willResignActive");
}

- (void)applicationWillTerminate:(UIApplication *)application {
  Say(@"willTerminate");
}

@end

@interface DelegateProxy : NSProxy <UIApplicationDelegate> {
  ProxiedDelegate *_target;
}
- (id)init;
@end

@implementation DelegateProxy

- (id)init {
  _target = [[ProxiedDelegate alloc] init];
  return self;
}

- (void)dealloc {
  [_target release];
  [super dealloc];
}

- (BOOL)respondsToSelector:(SEL)selector {
  return [_target respondsToSelector:selector];
}

- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
  return [_target methodSignatureForSelector:selector];
}

- (void)forwardInvocation:(NSInvocation *)invocation {
  [invocation invokeWithTarget:_target];
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"DelegateProxy");
  }
}
