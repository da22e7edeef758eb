#import "Hosts.h"

#include "support/Support.h"

namespace {

std::vector<std::string> heardOf;

std::string of(SEL selector, id detail) {
  std::string name = sel_getName(selector);
  // A method that has been grafted over runs under the selector that the library keeps it under.
  if (name.starts_with("zb_")) name.erase(0, 3);
  return name + " " + (detail ? support::text([detail description]) : "nil");
}

/// The options' keys, which is enough to tell one set of options from another.
id keysOf(NSDictionary *options) {
  return [[[options allKeys] sortedArrayUsingSelector:@selector(compare:)] componentsJoinedByString:@","];
}

} // namespace

const std::vector<std::string> &heard() { return heardOf; }
void clearHeard() { heardOf.clear(); }
void hear(const std::string &what) { heardOf.push_back(what); }

@implementation QVFullHost
@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options {
  hear(of(_cmd, keysOf(options)));
  if (whenLaunching) whenLaunching();
  return answer;
}
- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  hear(of(_cmd, keysOf(options)));
  if (whenLaunching) whenLaunching();
  return answer;
}
- (void)applicationDidBecomeActive:(UIApplication *)application {
  hear(of(_cmd, [application class]));
}
- (void)applicationWillResignActive:(UIApplication *)application {
  hear(of(_cmd, [application class]));
}
- (void)applicationWillTerminate:(UIApplication *)application {
  hear(of(_cmd, [application class]));
}
- (void)applicationDidEnterBackground:(UIApplication *)application {
  hear(of(_cmd, [application class]));
}
- (void)applicationWillEnterForeground:(UIApplication *)application {
  hear(of(_cmd, [application class]));
}
- (BOOL)application:(UIApplication *)application shouldAllowExtensionPointIdentifier:(NSString *)identifier {
  hear(of(_cmd, identifier));
  return answer;
}
- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  hear(of(_cmd, url) + " " + support::text(keysOf(options)));
  return answer;
}
// Not asked as long as there is the newer one.
- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  hear(of(_cmd, url));
  return !answer;
}
@end

@implementation QVHostBelow
- (void)applicationDidBecomeActive:(UIApplication *)application {
  hear("below");
  [super applicationDidBecomeActive:application];
}
@end

@implementation QVEmptyHost
@end

@implementation QVOlderURLHost
- (BOOL)application:(UIApplication *)application
              openURL:(NSURL *)url
    sourceApplication:(NSString *)sourceApplication
           annotation:(id)annotation {
  hear(of(_cmd, url) + " " + support::text([sourceApplication description]) + " " +
       support::text([annotation description]));
  return NO;
}
- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  hear(of(_cmd, url));
  return YES;
}
@end

@implementation QVOldestURLHost
- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  hear(of(_cmd, url));
  return NO;
}
@end

#define RAISES(...)                                                                                                    \
  __VA_ARGS__ {                                                                                                        \
    hear(of(_cmd, nil));                                                                                               \
    @throw [QVRaisingHost trouble];                                                                                    \
  }

@implementation QVRaisingHost
+ (NSException *)trouble {
  static NSException *const trouble = [[NSException alloc] initWithName:@"HostTrouble" reason:@"a reason" userInfo:nil];
  return trouble;
}
// clang-format off: selectors in their own layout
RAISES(- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options)
RAISES(- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options)
RAISES(- (void)applicationDidBecomeActive:(UIApplication *)application)
RAISES(- (void)applicationWillResignActive:(UIApplication *)application)
RAISES(- (void)applicationWillTerminate:(UIApplication *)application)
RAISES(- (void)applicationDidEnterBackground:(UIApplication *)application)
RAISES(- (void)applicationWillEnterForeground:(UIApplication *)application)
RAISES(- (UIWindow *)window)
RAISES(- (void)setWindow:(UIWindow *)window)
RAISES(- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options)
// clang-format on
@end

@implementation QVHostProxy
- (instancetype)initWithTarget:(id)target {
  _target = [target retain];
  return self;
}
- (void)dealloc {
  [_target release];
  [super dealloc];
}
- (NSMethodSignature *)methodSignatureForSelector:(SEL)selector {
  return [_target methodSignatureForSelector:selector];
}
- (void)forwardInvocation:(NSInvocation *)invocation {
  [invocation invokeWithTarget:_target];
}
- (BOOL)respondsToSelector:(SEL)selector {
  return [_target respondsToSelector:selector];
}
- (Class)class {
  return [_target class];
}
- (BOOL)isKindOfClass:(Class)cls {
  return [_target isKindOfClass:cls];
}
- (NSString *)description {
  return @"<host proxy>";
}
@end
