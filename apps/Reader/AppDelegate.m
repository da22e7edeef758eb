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
  controller.view = [ListView viewWithTitle:@"Reader" rows:@[ @[ @"Nothing yet", @"On the pasteboard" ] ]];
  self.window.rootViewController = controller;
  [self.window makeKeyAndVisible];
  return YES;
}

- (void)show:(NSArray *)items {
  NSMutableArray *rows = [NSMutableArray array];
  for (NSDictionary *item in items) {
    NSString *type = [[[item allKeys] sortedArrayUsingSelector:@selector(compare:)] lastObject];
    [rows addObject:@[ [[item objectForKey:type] description], type ]];
  }
  if ([rows count] == 0) [rows addObject:@[ @"Nothing", @"On the pasteboard" ]];
  [(ListView *)self.window.rootViewController.view setRows:rows];
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  NSArray *items = [[UIPasteboard generalPasteboard] items];
  if ([items count] == 0) NSLog(@"Reader sees nothing");
  for (NSDictionary *item in items) {
    for (NSString *type in [[item allKeys] sortedArrayUsingSelector:@selector(compare:)])
      NSLog(@"Reader sees %@: %@", type, [item objectForKey:type]);
  }
  [self show:items];
}

@end
