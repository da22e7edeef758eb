#import "Presentation.h"
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

// None of these keeps a window alive: the app owns them.
std::vector<UIWindow *> all;         // the one that came to the front of its level last is the last
std::vector<UIWindow *> haveBeenKey; // the latest is the last
UIWindow *key;

void take(UIWindow *window, std::vector<UIWindow *> &from) {
  from.erase(std::remove(from.begin(), from.end(), window), from.end());
}

void bringToFront(UIWindow *window) {
  take(window, all);
  all.push_back(window);
}

void post(NSString *name, UIWindow *window) {
  [[NSNotificationCenter defaultCenter] postNotificationName:name object:window];
}

void resignKey() {
  if (!key) return;
  UIWindow *const window = [[key retain] autorelease];
  key = nil;
  [window resignKeyWindow];
  post(UIWindowDidResignKeyNotification, window);
}

void becomeKey(UIWindow *window) {
  if (key == window || ![window qvdevice_canBecomeKey]) return;
  // Whoever is told that a window is key no longer may make one key, which is then told too. It is not asked again:
  // it may do so each time.
  resignKey();
  if (key == window) return;
  resignKey();
  key = window;
  take(window, haveBeenKey);
  haveBeenKey.push_back(window);
  [window becomeKeyWindow];
  post(UIWindowDidBecomeKeyNotification, window);
}

// After the key window has gone: the one on the screen that was key last takes its place.
void findAnotherKey() {
  if (key) return;
  const auto found =
      std::find_if(haveBeenKey.rbegin(), haveBeenKey.rend(), [](UIWindow *each) { return ![each isHidden]; });
  if (found != haveBeenKey.rend()) becomeKey(*found);
}

} // namespace

@implementation UIWindow

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [super setHidden:YES];
    all.push_back(self);
  }
  return self;
}

- (instancetype)init {
  return [self initWithFrame:[[UIScreen mainScreen] bounds]];
}

- (void)dealloc {
  take(self, all);
  take(self, haveBeenKey);
  if (key == self) {
    key = nil;
    findAnotherKey();
  }
  [_rootViewController release];
  [super dealloc];
}

@synthesize rootViewController = _rootViewController;
@synthesize windowLevel = _windowLevel;

- (void)setWindowLevel:(UIWindowLevel)level {
  if (level == _windowLevel) return;
  _windowLevel = level;
  bringToFront(self);
}

- (void)qvdevice_beginToShowControllers {
  NSArray *const controllers = [_rootViewController qvdevice_shownFromHere];
  for (UIViewController *each in controllers) {
    [[each view] setFrame:[self bounds]];
    [each qvdevice_beginToAppear:NO];
    [self addSubview:[each view]];
  }
  [self layoutIfNeeded];
}

// Not before the window itself is there for everybody: a controller that has appeared may do anything with it.
- (void)qvdevice_endToShowControllers {
  for (UIViewController *each in [_rootViewController qvdevice_shownFromHere])
    if (![self isHidden] && [[each view] window] == self) [each qvdevice_endToAppear:NO];
}

- (void)qvdevice_hideControllers {
  NSArray *const controllers = [_rootViewController qvdevice_shownFromHere];
  for (UIViewController *each in [controllers reverseObjectEnumerator])
    [each qvdevice_beginToDisappear:NO];
  for (UIViewController *each in [controllers reverseObjectEnumerator])
    [[each view] removeFromSuperview];
  for (UIViewController *each in [controllers reverseObjectEnumerator])
    [each qvdevice_endToDisappear:NO];
}

- (void)setRootViewController:(UIViewController *)controller {
  if (controller == _rootViewController) return;
  if (_rootViewController && ![self isHidden]) [self qvdevice_hideControllers];
  [controller retain];
  [_rootViewController autorelease];
  _rootViewController = controller;
  if (!controller || [self isHidden]) return;
  [self qvdevice_beginToShowControllers];
  [self qvdevice_endToShowControllers];
}

- (void)qvdevice_show {
  [super setHidden:NO];
  bringToFront(self);
  if (_rootViewController) [self qvdevice_beginToShowControllers];
  post(UIWindowDidBecomeVisibleNotification, self);
}

- (void)qvdevice_hide {
  [super setHidden:YES];
  if (_rootViewController) [self qvdevice_hideControllers];
  if (key == self) resignKey();
  post(UIWindowDidBecomeHiddenNotification, self);
  findAnotherKey();
}

- (void)setHidden:(BOOL)hidden {
  if (hidden == [self isHidden]) return;
  [[self retain] autorelease];
  if (hidden) {
    [self qvdevice_hide];
  } else {
    [self qvdevice_show];
    [self qvdevice_endToShowControllers];
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
  [[self retain] autorelease];
  becomeKey(self);
}

- (void)makeKeyAndVisible {
  [[self retain] autorelease];
  if ([self isHidden])
    [self qvdevice_show];
  else
    bringToFront(self);
  becomeKey(self);
  [self qvdevice_endToShowControllers];
}

- (void)becomeKeyWindow {
}

- (void)resignKeyWindow {
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

+ (NSArray *)qvdevice_windows {
  std::multimap<UIWindowLevel, UIWindow *> byLevel;
  for (UIWindow *window : all)
    byLevel.emplace([window windowLevel], window);
  NSMutableArray *const windows = [NSMutableArray arrayWithCapacity:byLevel.size()];
  for (const auto &[level, window] : byLevel)
    [windows addObject:window];
  return windows;
}

+ (NSArray *)qvdevice_visibleWindows {
  NSMutableArray *const shown = [NSMutableArray array];
  for (UIWindow *window in [self qvdevice_windows])
    if (![window isHidden]) [shown addObject:window];
  return shown;
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

- (UIViewController *)qvdevice_controllerThatFillsIt {
  return [[_rootViewController qvdevice_shownFromHere] firstObject];
}

- (BOOL)qvdevice_canBecomeKey {
  return YES;
}

- (BOOL)qvdevice_decidesOnRotation {
  return _rootViewController != nil;
}

@end
