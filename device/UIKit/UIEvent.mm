#import <UIKit/UIEvent.h>

@implementation UIEvent

- (instancetype)init {
  if ((self = [super init])) _timestamp = [[NSProcessInfo processInfo] systemUptime];
  return self;
}

- (UIEventType)type {
  return UIEventTypeTouches;
}

- (UIEventSubtype)subtype {
  return UIEventSubtypeNone;
}

- (NSTimeInterval)timestamp {
  return _timestamp;
}

- (NSSet *)allTouches {
  return [NSSet set];
}

@end
