#import <Foundation/Foundation.h>

/// Papers in the vault: a deep tree, with links in it, and a few in every other place that an app may write to.
@interface VaultFiles : NSObject

+ (void)fill;

@end
