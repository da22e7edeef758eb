#import <Foundation/Foundation.h>

/// Secrets of every kind that the keychain takes.
@interface VaultKeychain : NSObject

+ (void)fill;

/// How many items there are of each class, in words.
+ (NSString *)inventory;

@end
