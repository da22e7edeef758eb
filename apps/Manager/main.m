#import <UIKit/UIKit.h>

#import "ListView.h"

@interface AppDelegate : NSObject <UIApplicationDelegate> {
  UIWindow *_window;
}
@property (nonatomic, retain) UIWindow *window;
@end

@implementation AppDelegate

@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)launchOptions {
  self.window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  UIViewController *controller = [[[UIViewController alloc] init] autorelease];
  controller.view = [ListView viewWithTitle:@"Manager" rows:@[
    @[ @"Passcode", @"Asked for by managed apps" ], @[ @"Managed apps", @"Notes, Vault" ],
    @[ @"Policies", @"Up to date" ]
  ]];
  self.window.rootViewController = controller;
  [self.window makeKeyAndVisible];
  return YES;
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, NSStringFromClass([AppDelegate class]));
  }
}
