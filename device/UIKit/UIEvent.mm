#import "TouchEvents.h"

@implementation UIEvent

- (instancetype)init {
  if ((self = [super init])) {
    _timestamp = [[NSProcessInfo processInfo] systemUptime];
    _touches = [[NSSet alloc] init];
  }
  return self;
}

- (void)dealloc {
  [_touches release];
  [super dealloc];
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
  return _touches;
}

- (NSSet *)touchesForWindow:(UIWindow *)window {
  NSMutableSet *const touches = [NSMutableSet set];
  for (UITouch *touch in _touches)
    if ([touch window] == window) [touches addObject:touch];
  return touches;
}

- (NSSet *)touchesForView:(UIView *)view {
  NSMutableSet *const touches = [NSMutableSet set];
  for (UITouch *touch in _touches)
    if ([touch view] == view) [touches addObject:touch];
  return touches;
}

@end

@implementation UIEvent (QVDeviceEvent)

+ (UIEvent *)qvdevice_eventWithTouch:(UITouch *)touch {
  UIEvent *const event = [[[self alloc] init] autorelease];
  [event->_touches release];
  event->_touches = [[NSSet alloc] initWithObjects:touch, nil];
  event->_timestamp = [touch timestamp];
  return event;
}

@end
