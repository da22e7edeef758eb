#import "ServedContext.h"

#import <dispatch/dispatch.h>

#import "ExtensionMessages.h"

using namespace qvdevice;

namespace {

/// What of an error another process can be told.
NSError *forAnotherProcess(NSError *error) {
  NSMutableDictionary *const information = [NSMutableDictionary dictionary];
  for (id key in [error userInfo]) {
    id const value = [[error userInfo] objectForKey:key];
    if ([value isKindOfClass:[NSString class]] || [value isKindOfClass:[NSNumber class]] ||
        [value isKindOfClass:[NSURL class]] || [value isKindOfClass:[NSData class]])
      [information setObject:value forKey:key];
  }
  return [NSError errorWithDomain:[error domain] code:[error code] userInfo:information];
}

} // namespace

@implementation QVDeviceServedContext

- (instancetype)initWithItems:(NSArray *)items channel:(int)channel {
  if ((self = [super init])) {
    _items = [items copy];
    _channel = channel;
  }
  return self;
}

- (void)dealloc {
  [_items release];
  [super dealloc];
}

- (NSArray *)inputItems {
  return _items;
}

/// A host that has gone is no concern of the extension's: it goes too.
- (void)say:(NSDictionary *)message {
  NSData *const bytes = bytesOfMessage(message);
  @synchronized(self) {
    sendBytes(_channel, bytes);
  }
}

- (void)ready {
  [self say:@{@"message" : @"ready"}];
}

- (void)failBecause:(NSString *)reason {
  NSString *const description = [NSString
      stringWithFormat:@"The extension %@ cannot be shown: %@.", [[NSBundle mainBundle] bundleIdentifier], reason];
  NSError *const error = [NSError errorWithDomain:NSExtensionErrorDomain code:NSExtensionViewControllerError
                                         userInfo:@{NSLocalizedDescriptionKey : description}];
  [self say:@{@"message" : @"failed", @"error" : error}];
}

- (void)completeRequestReturningItems:(NSArray *)items completionHandler:(void (^)(BOOL expired))completionHandler {
  [self say:@{@"message" : @"completed", @"items" : items ? items : @[]}];
  if (!completionHandler) return;
  dispatch_async(dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_DEFAULT, 0), ^{
    completionHandler(NO);
  });
}

- (void)cancelRequestWithError:(NSError *)error {
  [self say:error ? @{@"message" : @"cancelled", @"error" : forAnotherProcess(error)} : @{@"message" : @"cancelled"}];
}

@end
