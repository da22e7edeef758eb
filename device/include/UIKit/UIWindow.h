#pragma once

#import <UIKit/UIView.h>

@class UIScreen, UIViewController;

typedef CGFloat UIWindowLevel;

UIKIT_EXTERN const UIWindowLevel UIWindowLevelNormal;
UIKIT_EXTERN const UIWindowLevel UIWindowLevelAlert;
UIKIT_EXTERN const UIWindowLevel UIWindowLevelStatusBar;

@interface UIWindow : UIView {
@private
  UIViewController *_rootViewController;
  UIWindowLevel _windowLevel;
}

@property (nonatomic, retain) UIViewController *rootViewController;
@property (nonatomic) UIWindowLevel windowLevel;
@property (nonatomic, readonly, getter=isKeyWindow) BOOL keyWindow;
@property (nonatomic, readonly) UIScreen *screen;

- (void)makeKeyAndVisible;
- (void)makeKeyWindow;
- (void)becomeKeyWindow;
- (void)resignKeyWindow;
/// Tells the views that the event's touches in this window began on.
- (void)sendEvent:(UIEvent *)event;

@end

UIKIT_EXTERN NSNotificationName const UIWindowDidBecomeVisibleNotification;
UIKIT_EXTERN NSNotificationName const UIWindowDidBecomeHiddenNotification;
UIKIT_EXTERN NSNotificationName const UIWindowDidBecomeKeyNotification;
UIKIT_EXTERN NSNotificationName const UIWindowDidResignKeyNotification;
