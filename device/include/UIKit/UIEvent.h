#pragma once

#import <Foundation/Foundation.h>

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
}

@property (nonatomic, readonly) UIEventType type;
@property (nonatomic, readonly) UIEventSubtype subtype;
@property (nonatomic, readonly) NSTimeInterval timestamp;
@property (nonatomic, readonly) NSSet *allTouches;

@end
