#pragma once

#import <Foundation/Foundation.h>

/// The context of the request that this process serves.
@interface QVDeviceServedContext : NSExtensionContext {
@private
  NSArray *_items;
  int _channel;
}

- (instancetype)initWithItems:(NSArray *)items channel:(int)channel;

/// The view controller is there.
- (void)ready;
/// There will be none.
- (void)failBecause:(NSString *)reason;

@end
