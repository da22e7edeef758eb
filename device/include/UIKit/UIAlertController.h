#pragma once

#import <UIKit/UIViewController.h>

typedef NS_ENUM(NSInteger, UIAlertActionStyle) {
  UIAlertActionStyleDefault = 0,
  UIAlertActionStyleCancel,
  UIAlertActionStyleDestructive,
};

typedef NS_ENUM(NSInteger, UIAlertControllerStyle) {
  UIAlertControllerStyleActionSheet = 0,
  UIAlertControllerStyleAlert,
};

@interface UIAlertAction : NSObject <NSCopying> {
@private
  NSString *_title;
  UIAlertActionStyle _style;
  BOOL _disabled;
  void (^_handler)(UIAlertAction *action);
}

+ (instancetype)actionWithTitle:(NSString *)title
                          style:(UIAlertActionStyle)style
                        handler:(void (^)(UIAlertAction *action))handler;

@property (nonatomic, readonly) NSString *title;
@property (nonatomic, readonly) UIAlertActionStyle style;
@property (nonatomic, getter=isEnabled) BOOL enabled;

@end

/// A message with a button for each action. It takes itself away when one is tapped, and then runs its handler.
@interface UIAlertController : UIViewController {
@private
  NSString *_message;
  UIAlertControllerStyle _preferredStyle;
  NSMutableArray *_actions;
}

+ (instancetype)alertControllerWithTitle:(NSString *)title
                                 message:(NSString *)message
                          preferredStyle:(UIAlertControllerStyle)preferredStyle;

/// Before the alert is presented. At most one action can be the one that cancels.
- (void)addAction:(UIAlertAction *)action;

@property (nonatomic, readonly) NSArray *actions;
@property (nonatomic, copy) NSString *message;
@property (nonatomic, readonly) UIAlertControllerStyle preferredStyle;

@end
