#pragma once

#import <CoreGraphics/CGGeometry.h>

@class UIView, UIWindow;

typedef NS_ENUM(NSInteger, UITouchPhase) {
  UITouchPhaseBegan,
  UITouchPhaseMoved,
  UITouchPhaseStationary,
  UITouchPhaseEnded,
  UITouchPhaseCancelled,
};

@interface UITouch : NSObject {
@private
  NSTimeInterval _timestamp;
  UITouchPhase _phase;
  NSUInteger _tapCount;
  UIWindow *_window;
  UIView *_view;
  CGPoint _location;
  CGPoint _previousLocation;
}

@property (nonatomic, readonly) NSTimeInterval timestamp;
@property (nonatomic, readonly) UITouchPhase phase;
@property (nonatomic, readonly) NSUInteger tapCount;
/// Where the touch began, whatever lies under it later.
@property (nonatomic, readonly, retain) UIWindow *window;
@property (nonatomic, readonly, retain) UIView *view;

/// In the coordinates of `view`, or of the window when `view` is nil.
- (CGPoint)locationInView:(UIView *)view;
- (CGPoint)previousLocationInView:(UIView *)view;

@end
