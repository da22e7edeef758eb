#import <Zorbel/ZBAppDelegateProxy.h>

@implementation ZBAppDelegateProxy
@end
