#import "AppDelegate.h"

@implementation AppDelegate

@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)launchOptions {
  self.window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  self.window.rootViewController = [[[UIViewController alloc] init] autorelease];
  [self.window makeKeyAndVisible];
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  NSArray *items = [[UIPasteboard generalPasteboard] items];
  if ([items count] == 0) NSLog(@"Reader sees nothing");
  for (NSDictionary *item in items) {
    for (NSString *type in [[item allKeys] sortedArrayUsingSelector:@selector(compare:)])
      NSLog(@"Reader sees %@: %@", type, [item objectForKey:type]);
  }
}

@end
