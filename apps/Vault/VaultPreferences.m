#import "VaultPreferences.h"

@implementation VaultPreferences

+ (void)fill {
  NSUserDefaults *defaults = [NSUserDefaults standardUserDefaults];
  [defaults setObject:@"ann" forKey:@"LastAccount"];
  [defaults setInteger:300 forKey:@"SecondsUntilLocked"];
  [defaults setPersistentDomain:@{@"Shelves" : @[ @"top", @"bottom" ]} forName:@"com.example.vault.shelves"];
  [defaults synchronize];
}

@end
