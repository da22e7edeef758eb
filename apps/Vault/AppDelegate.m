#import "AppDelegate.h"

#import "ListView.h"
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
  UIViewController *controller = [[[UIViewController alloc] init] autorelease];
  controller.view = [ListView viewWithTitle:@"Vault" rows:@[
    @[ @"PINs", @"ann, bob, cem" ], @[ @"Web password", @"vault.example.com" ], @[ @"Certificate", @"Example CA" ],
    @[ @"Private key", @"com.example.vault.key" ], @[ @"Will.txt", @"Papers" ], @[ @"Shelves", @"12, one in the other" ]
  ]];
  self.window.rootViewController = controller;
  [self.window makeKeyAndVisible];

  // A vault that was filled before keeps what it has.
  [VaultKeychain fill];
  [VaultPreferences fill];
  [VaultFiles fill];
  NSLog(@"The vault holds %@.", [VaultKeychain inventory]);
  return YES;
}

@end
