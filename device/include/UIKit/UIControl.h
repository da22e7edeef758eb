#pragma once

#import <UIKit/UIView.h>

@class UITouch;

typedef NS_OPTIONS(NSUInteger, UIControlEvents) {
  UIControlEventTouchDown = 1 << 0,
  UIControlEventTouchDownRepeat = 1 << 1,
  UIControlEventTouchDragInside = 1 << 2,
  UIControlEventTouchDragOutside = 1 << 3,
  UIControlEventTouchDragEnter = 1 << 4,
  UIControlEventTouchDragExit = 1 << 5,
  UIControlEventTouchUpInside = 1 << 6,
  UIControlEventTouchUpOutside = 1 << 7,
  UIControlEventTouchCancel = 1 << 8,
  UIControlEventValueChanged = 1 << 12,
  UIControlEventEditingDidBegin = 1 << 16,
  UIControlEventEditingChanged = 1 << 17,
  UIControlEventEditingDidEnd = 1 << 18,
  UIControlEventEditingDidEndOnExit = 1 << 19,
  UIControlEventAllTouchEvents = 0x00000FFF,
  UIControlEventAllEditingEvents = 0x000F0000,
  UIControlEventAllEvents = 0xFFFFFFFF,
};

typedef NS_OPTIONS(NSUInteger, UIControlState) {
  UIControlStateNormal = 0,
  UIControlStateHighlighted = 1 << 0,
  UIControlStateDisabled = 1 << 1,
  UIControlStateSelected = 1 << 2,
};

@interface UIControl : UIView {
@private
  NSMutableArray *_actions;
  BOOL _disabled;
  BOOL _highlighted;
  BOOL _selected;
  BOOL _tracking;
  BOOL _touchInside;
}

@property (nonatomic, getter=isEnabled) BOOL enabled;
@property (nonatomic, getter=isHighlighted) BOOL highlighted;
@property (nonatomic, getter=isSelected) BOOL selected;
@property (nonatomic, readonly) UIControlState state;
@property (nonatomic, readonly, getter=isTracking) BOOL tracking;
@property (nonatomic, readonly, getter=isTouchInside) BOOL touchInside;

/// The target is not retained; one that is gone is sent nothing. Without a target the action goes to whoever answers it
/// first, from the first responder upwards.
- (void)addTarget:(id)target action:(SEL)action forControlEvents:(UIControlEvents)events;
/// nil stands for every target, NULL for every action.
- (void)removeTarget:(id)target action:(SEL)action forControlEvents:(UIControlEvents)events;
@property (nonatomic, readonly) NSSet *allTargets;
@property (nonatomic, readonly) UIControlEvents allControlEvents;
/// The names of the actions for one of the events; nil when there is none.
- (NSArray *)actionsForTarget:(id)target forControlEvent:(UIControlEvents)event;

- (void)sendAction:(SEL)action to:(id)target forEvent:(UIEvent *)event;
- (void)sendActionsForControlEvents:(UIControlEvents)events;

- (BOOL)beginTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event;
- (BOOL)continueTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event;
- (void)endTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event;
- (void)cancelTrackingWithEvent:(UIEvent *)event;

@end
