#pragma once

#import <Foundation/Foundation.h>

@class UIView, UIWindow;

typedef NS_ENUM(NSInteger, UIEventType) {
  UIEventTypeTouches,
  UIEventTypeMotion,
  UIEventTypeRemoteControl,
  UIEventTypePresses,
};

typedef NS_ENUM(NSInteger, UIEventSubtype) {
  UIEventSubtypeNone = 0,
  UIEventSubtypeMotionShake = 1,
};

@interface UIEvent : NSObject {
@private
  NSTimeInterval _timestamp;
  NSSet *_touches;
}

@property (nonatomic, readonly) UIEventType type;
@property (nonatomic, readonly) UIEventSubtype subtype;
/// Seconds since the system started.
@property (nonatomic, readonly) NSTimeInterval timestamp;
@property (nonatomic, readonly) NSSet *allTouches;

- (NSSet *)touchesForWindow:(UIWindow *)window;
- (NSSet *)touchesForView:(UIView *)view;

@end
