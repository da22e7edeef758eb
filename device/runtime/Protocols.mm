// Clang tells GCC's runtime of the protocols that a module uses in a category of a class that nobody defines, so that
// it hears of them at all. Without the class the category waits for ever, and a protocol is known only once a class
// that adopts it has been loaded. Apple's runtime knows every protocol of an image from the start.

#import <Foundation/Foundation.h>

@interface __ObjC_Protocol_Holder_Ugly_Hack : NSObject
@end

@implementation __ObjC_Protocol_Holder_Ugly_Hack
@end
