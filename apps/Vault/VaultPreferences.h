#import <Foundation/Foundation.h>

@interface VaultPreferences : NSObject

+ (void)fill;

@end
