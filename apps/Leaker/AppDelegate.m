#import "AppDelegate.h"

#import "ListView.h"

@implementation AppDelegate

@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)launchOptions {
  self.window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  UIViewController *controller = [[[UIViewController alloc] init] autorelease];
  controller.view = [ListView
      viewWithTitle:@"Leaker"
               rows:@[ @[ @"The merger is off", @"Confidential" ], @[ @"intranet.example.com/merger", @"Link" ] ]];
  self.window.rootViewController = controller;
  [self.window makeKeyAndVisible];
  return YES;
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  // The user needs a moment to find the text.
  [self performSelector:@selector(copySecret:) withObject:nil afterDelay:0.05];
}

- (void)copySecret:(id)sender {
  [[UIPasteboard generalPasteboard] setItems:@[
    @{@"public.utf8-plain-text" : @"The merger is off", @"com.example.leaker.note" : @{@"confidential" : @"yes"}},
    @{@"public.url" : [NSURL URLWithString:@"https://intranet.example.com/merger"]},
  ]];
  NSLog(@"Leaker copied a secret");
}

@end
