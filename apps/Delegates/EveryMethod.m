// A delegate with every method that an application tells one, and those by which a managed app hears of its
// configuration and state.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface EveryMethodDelegate : UIResponder <UIApplicationDelegate> {
  UIWindow *_window;
}
@end

@implementation EveryMethodDelegate

- (void)dealloc {
  [_window release];
  [super dealloc];
}

- (UIWindow *)window {
  return _window;
}

- (void)setWindow:(UIWindow *)window {
  Say(@"setWindow:");
  [window retain];
  [_window release];
  _window = window;
}

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"willFinishLaunching with %@", OnOneLine(options));
  return YES;
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  Say(@"didFinishLaunching with %@", OnOneLine(options));
  UIWindow *window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  window.rootViewController = [[[UIViewController alloc] init] autorelease];
  self.window = window;
  [self.window makeKeyAndVisible];
  return YES;
}

- (void)applicationDidFinishLaunching:(UIApplication *)application {
  Say(@"applicationDidFinishLaunching:, for systems that know no options");
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  Say(@"didBecomeActive");
}

- (void)applicationWillResignActive:(UIApplication *)application {
  Say(@"willResignActive");
}

- (void)applicationDidEnterBackground:(UIApplication *)application {
  Say(@"didEnterBackground");
}

- (void)applicationWillEnterForeground:(UIApplication *)application {
  Say(@"willEnterForeground");
}

- (void)applicationWillTerminate:(UIApplication *)application {
  Say(@"willTerminate");
}

- (BOOL)application:(UIApplication *)application
    shouldAllowExtensionPointIdentifier:(NSString *)extensionPointIdentifier {
  Say(@"shouldAllowExtensionPoint %@", extensionPointIdentifier);
  return YES;
}

- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  Say(@"openURL %@ with %@", url, OnOneLine(options));
  return YES;
}

- (BOOL)application:(UIApplication *)application
              openURL:(NSURL *)url
    sourceApplication:(NSString *)sourceApplication
           annotation:(id)annotation {
  Say(@"openURL %@ from %@, for systems that know no options", url, sourceApplication);
  return YES;
}

- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  Say(@"handleOpenURL %@, for systems that know no source", url);
  return YES;
}

#pragma mark - As a managed app

/// The text that says why a configuration could not be used; nil when it could.
- (NSString *)objectionTo:(NSDictionary *)config {
  return [config objectForKey:@"server"] ? nil : @"There is no server.";
}

- (NSString *)zorbelConfigIs:(NSDictionary *)config {
  Say(@"zorbelConfigIs %@", OnOneLine(config));
  return [self objectionTo:config];
}

- (NSString *)zorbelConfigChangedTo:(NSDictionary *)config {
  Say(@"zorbelConfigChangedTo %@", OnOneLine(config));
  return @"This answer counts only where there is no other.";
}

- (void)zorbelStateChangedTo:(long long)state {
  Say(@"zorbelStateChangedTo %lld", state);
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"EveryMethodDelegate");
  }
}
