#import "AppDelegate.h"

#import "VaultFiles.h"
#import "VaultKeychain.h"
#import "VaultPreferences.h"

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

  // A vault that was filled before keeps what it has.
  [VaultKeychain fill];
  [VaultPreferences fill];
  [VaultFiles fill];
  NSLog(@"The vault holds %@.", [VaultKeychain inventory]);
  return YES;
}

@end
