#import "UIViewInternal.h"

#include <algorithm>
#include <map>
#include <vector>

const UIWindowLevel UIWindowLevelNormal = 0;
const UIWindowLevel UIWindowLevelStatusBar = 1000;
const UIWindowLevel UIWindowLevelAlert = 2000;

NSNotificationName const UIWindowDidBecomeVisibleNotification = @"UIWindowDidBecomeVisibleNotification";
NSNotificationName const UIWindowDidBecomeHiddenNotification = @"UIWindowDidBecomeHiddenNotification";
NSNotificationName const UIWindowDidBecomeKeyNotification = @"UIWindowDidBecomeKeyNotification";
NSNotificationName const UIWindowDidResignKeyNotification = @"UIWindowDidResignKeyNotification";

namespace {

// Shown windows are not kept alive by being shown: the app owns them.
std::vector<UIWindow *> visible;
UIWindow *key;

void post(NSString *name, UIWindow *window) {
  [[NSNotificationCenter defaultCenter] postNotificationName:name object:window];
}

} // namespace

@implementation UIWindow

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) [super setHidden:YES];
  return self;
}

- (instancetype)init {
  return [self initWithFrame:[[UIScreen mainScreen] bounds]];
}

- (void)dealloc {
  visible.erase(std::remove(visible.begin(), visible.end(), self), visible.end());
  if (key == self) key = nil;
  [_rootViewController release];
  [super dealloc];
}

@synthesize rootViewController = _rootViewController;
@synthesize windowLevel = _windowLevel;

- (void)qvdevice_showRoot {
  UIView *const view = [_rootViewController view];
  [view setFrame:[self bounds]];
  [_rootViewController viewWillAppear:NO];
  [self addSubview:view];
  [self layoutIfNeeded];
  [_rootViewController viewDidAppear:NO];
}

- (void)qvdevice_hideRoot {
  [_rootViewController viewWillDisappear:NO];
  [[_rootViewController view] removeFromSuperview];
  [_rootViewController viewDidDisappear:NO];
}

- (void)setRootViewController:(UIViewController *)controller {
  if (controller == _rootViewController) return;
  if (_rootViewController && ![self isHidden]) [self qvdevice_hideRoot];
  [controller retain];
  [_rootViewController release];
  _rootViewController = controller;
  if (controller && ![self isHidden]) [self qvdevice_showRoot];
}

- (void)setHidden:(BOOL)hidden {
  if (hidden == [self isHidden]) return;
  [super setHidden:hidden];
  if (hidden) {
    visible.erase(std::remove(visible.begin(), visible.end(), self), visible.end());
    if (_rootViewController) [self qvdevice_hideRoot];
    if (key == self) [self resignKeyWindow];
    post(UIWindowDidBecomeHiddenNotification, self);
  } else {
    visible.push_back(self);
    if (_rootViewController) [self qvdevice_showRoot];
    post(UIWindowDidBecomeVisibleNotification, self);
  }
}

- (UIScreen *)screen {
  return [UIScreen mainScreen];
}

- (UIResponder *)nextResponder {
  return [UIApplication sharedApplication];
}

- (BOOL)isKeyWindow {
  return key == self;
}

- (void)makeKeyWindow {
  if (key == self) return;
  [key resignKeyWindow];
  key = self;
  [self becomeKeyWindow];
  post(UIWindowDidBecomeKeyNotification, self);
}

- (void)makeKeyAndVisible {
  [self setHidden:NO];
  [self makeKeyWindow];
}

- (void)becomeKeyWindow {
}

- (void)resignKeyWindow {
  if (key != self) return;
  key = nil;
  post(UIWindowDidResignKeyNotification, self);
}

- (void)qvdevice_tell:(UIView *)view ofTouches:(NSSet *)touches inPhase:(UITouchPhase)phase event:(UIEvent *)event {
  switch (phase) {
  case UITouchPhaseBegan:
    [view touchesBegan:touches withEvent:event];
    break;
  case UITouchPhaseMoved:
    [view touchesMoved:touches withEvent:event];
    break;
  case UITouchPhaseEnded:
    [view touchesEnded:touches withEvent:event];
    break;
  case UITouchPhaseCancelled:
    [view touchesCancelled:touches withEvent:event];
    break;
  case UITouchPhaseStationary:
    break;
  }
}

- (void)sendEvent:(UIEvent *)event {
  for (UITouch *touch in [event touchesForWindow:self])
    [self qvdevice_tell:[touch view] ofTouches:[NSSet setWithObject:touch] inPhase:[touch phase] event:event];
}

@end

@implementation UIWindow (QVDeviceInternal)

+ (NSArray *)qvdevice_visibleWindows {
  std::multimap<UIWindowLevel, UIWindow *> byLevel;
  for (UIWindow *window : visible)
    byLevel.emplace([window windowLevel], window);
  NSMutableArray *const windows = [NSMutableArray arrayWithCapacity:byLevel.size()];
  for (const auto &[level, window] : byLevel)
    [windows addObject:window];
  return windows;
}

+ (UIWindow *)qvdevice_keyWindow {
  return key;
}

- (UIResponder *)qvdevice_frontmostResponder {
  UIViewController *controller = _rootViewController;
  while ([controller presentedViewController])
    controller = [controller presentedViewController];
  if ([controller isKindOfClass:[UINavigationController class]])
    if (UIViewController *const top = [(UINavigationController *)controller topViewController]) controller = top;
  return controller ? (UIResponder *)controller : (UIResponder *)self;
}

@end
