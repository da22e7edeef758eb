#import "TouchEvents.h"

@implementation UITouch

- (void)dealloc {
  [_view release];
  [_window release];
  [super dealloc];
}

@synthesize timestamp = _timestamp;
@synthesize phase = _phase;
@synthesize tapCount = _tapCount;
@synthesize window = _window;
@synthesize view = _view;

- (CGPoint)pointFromWindow:(CGPoint)point inView:(UIView *)view {
  return view ? [view convertPoint:point fromView:_window] : point;
}

- (CGPoint)locationInView:(UIView *)view {
  return [self pointFromWindow:_location inView:view];
}

- (CGPoint)previousLocationInView:(UIView *)view {
  return [self pointFromWindow:_previousLocation inView:view];
}

@end

@implementation UITouch (QVDeviceTouch)

+ (UITouch *)qvdevice_touchAtPoint:(CGPoint)point {
  UITouch *const touch = [[[self alloc] init] autorelease];
  touch->_timestamp = [[NSProcessInfo processInfo] systemUptime];
  touch->_tapCount = 1;
  // The frontmost window that has something to say about the point gets the touch.
  for (UIWindow *window in [[UIWindow qvdevice_visibleWindows] reverseObjectEnumerator]) {
    const CGPoint inWindow = CGPointMake(point.x - [window frame].origin.x, point.y - [window frame].origin.y);
    UIView *const hit = [window hitTest:inWindow withEvent:nil];
    if (!hit) continue;
    touch->_window = [window retain];
    touch->_view = [hit retain];
    touch->_location = touch->_previousLocation = inWindow;
    break;
  }
  return touch;
}

- (void)qvdevice_setPhase:(UITouchPhase)phase {
  _phase = phase;
  _timestamp = [[NSProcessInfo processInfo] systemUptime];
}

@end
