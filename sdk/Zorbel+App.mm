#import <Zorbel/Zorbel.h>

#import <Zorbel/ZBProxy.h>

#import "CallRecord.h"

@implementation Zorbel (App)

- (void)displayMessage:(NSString *)message {
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{@"message" : QVDeviceOrNull([[message copy] autorelease])});
}

- (void)willExit {
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{});
}

- (void)sendEvent:(UIEvent *)event {
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{@"event" : QVDeviceUnretained(event)},
                     @{@"event" : QVDeviceClassName(event)});
}

- (void)postPasscodeExtensionResult:(NSDictionary *)result {
  QVDeviceRecordCall(NSStringFromSelector(_cmd), @{@"result" : QVDeviceOrNull([[result copy] autorelease])});
}

- (UIPasteboard *)proxyForPasteboard:(UIPasteboard *)pasteboard {
  id const proxy = pasteboard ? [[[ZBProxy alloc] initWithTarget:pasteboard] autorelease] : nil;
  return proxy;
}

@end
