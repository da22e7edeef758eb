#import <UIKit/UIKit.h>

#include <objc/objc-arc.h>

// One action of a control: what is sent, to whom, and when.
@interface QVDeviceControlAction : NSObject {
@public
  id target_;
  SEL action_;
  UIControlEvents events_;
  BOOL toResponders_;
}
@end

@implementation QVDeviceControlAction

- (id)initWithTarget:(id)target action:(SEL)action events:(UIControlEvents)events {
  if ((self = [super init])) {
    objc_initWeak(&target_, target);
    action_ = action;
    events_ = events;
    toResponders_ = target == nil;
  }
  return self;
}

- (void)dealloc {
  objc_destroyWeak(&target_);
  [super dealloc];
}

- (id)target {
  return objc_loadWeak(&target_);
}

@end

@implementation UIControl

- (void)dealloc {
  [_actions release];
  [super dealloc];
}

@synthesize highlighted = _highlighted;
@synthesize selected = _selected;
@synthesize tracking = _tracking;
@synthesize touchInside = _touchInside;

- (BOOL)isEnabled {
  return !_disabled;
}

- (void)setEnabled:(BOOL)enabled {
  _disabled = !enabled;
}

- (UIControlState)state {
  return (_highlighted ? UIControlStateHighlighted : UIControlStateNormal) |
         (_disabled ? UIControlStateDisabled : UIControlStateNormal) |
         (_selected ? UIControlStateSelected : UIControlStateNormal);
}

- (void)addTarget:(id)target action:(SEL)action forControlEvents:(UIControlEvents)events {
  if (!action) return;
  if (!_actions) _actions = [[NSMutableArray alloc] init];
  for (QVDeviceControlAction *each in _actions)
    if ([each target] == target && each->toResponders_ == (target == nil) && sel_isEqual(each->action_, action)) {
      each->events_ |= events;
      return;
    }
  QVDeviceControlAction *const added = [[QVDeviceControlAction alloc] initWithTarget:target action:action
                                                                              events:events];
  [_actions addObject:added];
  [added release];
}

- (void)removeTarget:(id)target action:(SEL)action forControlEvents:(UIControlEvents)events {
  for (QVDeviceControlAction *each in [[_actions copy] autorelease]) {
    if (target && [each target] != target) continue;
    if (action && !sel_isEqual(each->action_, action)) continue;
    each->events_ &= ~events;
    if (each->events_ == 0) [_actions removeObjectIdenticalTo:each];
  }
}

- (NSSet *)allTargets {
  NSMutableSet *const targets = [NSMutableSet set];
  for (QVDeviceControlAction *each in _actions) {
    id const target = [each target];
    if (target || each->toResponders_) [targets addObject:target ? target : [NSNull null]];
  }
  return targets;
}

- (UIControlEvents)allControlEvents {
  UIControlEvents events = 0;
  for (QVDeviceControlAction *each in _actions)
    events |= each->events_;
  return events;
}

- (NSArray *)actionsForTarget:(id)target forControlEvent:(UIControlEvents)event {
  NSMutableArray *const names = [NSMutableArray array];
  for (QVDeviceControlAction *each in _actions)
    if ((each->events_ & event) && [each target] == target && each->toResponders_ == (target == nil))
      [names addObject:NSStringFromSelector(each->action_)];
  return [names count] ? names : nil;
}

- (void)sendAction:(SEL)action to:(id)target forEvent:(UIEvent *)event {
  [[UIApplication sharedApplication] sendAction:action to:target from:self forEvent:event];
}

- (void)sendActionsForControlEvents:(UIControlEvents)events withEvent:(UIEvent *)event {
  // An action may take its own target away, or the control itself.
  [[self retain] autorelease];
  for (QVDeviceControlAction *each in [[_actions copy] autorelease]) {
    if (!(each->events_ & events)) continue;
    id const target = [each target];
    if (target || each->toResponders_) [self sendAction:each->action_ to:target forEvent:event];
  }
}

- (void)sendActionsForControlEvents:(UIControlEvents)events {
  [self sendActionsForControlEvents:events withEvent:nil];
}

- (BOOL)beginTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event {
  (void)touch;
  (void)event;
  return YES;
}

- (BOOL)continueTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event {
  (void)touch;
  (void)event;
  return YES;
}

- (void)endTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event {
  (void)touch;
  (void)event;
}

- (void)cancelTrackingWithEvent:(UIEvent *)event {
  (void)event;
}

- (BOOL)isUnder:(UITouch *)touch event:(UIEvent *)event {
  return [self pointInside:[touch locationInView:self] withEvent:event];
}

// A control keeps its touches to itself, also while it is disabled: they go no further up.
- (void)touchesBegan:(NSSet *)touches withEvent:(UIEvent *)event {
  if (_disabled || _tracking) return;
  UITouch *const touch = [touches anyObject];
  _touchInside = _tracking = YES;
  if (![self beginTrackingWithTouch:touch withEvent:event]) {
    _touchInside = _tracking = NO;
    return;
  }
  [self setHighlighted:YES];
  [self sendActionsForControlEvents:UIControlEventTouchDown withEvent:event];
}

- (void)touchesMoved:(NSSet *)touches withEvent:(UIEvent *)event {
  if (!_tracking) return;
  UITouch *const touch = [touches anyObject];
  const BOOL before = _touchInside;
  _touchInside = [self isUnder:touch event:event];
  if (![self continueTrackingWithTouch:touch withEvent:event]) {
    _tracking = NO;
    [self setHighlighted:NO];
    return;
  }
  [self setHighlighted:_touchInside];
  if (_touchInside != before)
    [self sendActionsForControlEvents:_touchInside ? UIControlEventTouchDragEnter : UIControlEventTouchDragExit
                            withEvent:event];
  [self sendActionsForControlEvents:_touchInside ? UIControlEventTouchDragInside : UIControlEventTouchDragOutside
                          withEvent:event];
}

- (void)touchesEnded:(NSSet *)touches withEvent:(UIEvent *)event {
  if (!_tracking) return;
  UITouch *const touch = [touches anyObject];
  _touchInside = [self isUnder:touch event:event];
  _tracking = NO;
  [self endTrackingWithTouch:touch withEvent:event];
  [self setHighlighted:NO];
  [self sendActionsForControlEvents:_touchInside ? UIControlEventTouchUpInside : UIControlEventTouchUpOutside
                          withEvent:event];
}

- (void)touchesCancelled:(NSSet *)touches withEvent:(UIEvent *)event {
  (void)touches;
  if (!_tracking) return;
  _touchInside = _tracking = NO;
  [self cancelTrackingWithEvent:event];
  [self setHighlighted:NO];
  [self sendActionsForControlEvents:UIControlEventTouchCancel withEvent:event];
}

@end
