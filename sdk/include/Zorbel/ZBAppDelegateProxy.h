// Stands between the application and its delegate.

#ifndef ZORBEL_ZBAPPDELEGATEPROXY_H
#define ZORBEL_ZBAPPDELEGATEPROXY_H

#import <Zorbel/ZBProxy.h>

/// What the SDK puts in the place of the application's delegate, around it.
@interface ZBAppDelegateProxy : ZBProxy
@end

#endif
