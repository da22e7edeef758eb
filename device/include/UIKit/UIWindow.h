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

/// Windows are hidden until they are shown; being shown does not keep them alive.

@property (nonatomic, retain) UIViewController *rootViewController;
/// A higher level covers a lower one. A window that comes to another level comes to the front of it.
@property (nonatomic) UIWindowLevel windowLevel;
@property (nonatomic, readonly, getter=isKeyWindow) BOOL keyWindow;
@property (nonatomic, readonly) UIScreen *screen;

/// Shows the window, in front of the others of its level, and makes it the key window.
- (void)makeKeyAndVisible;
- (void)makeKeyWindow;
/// Sent to a window that has become, or is no longer, the key window, before that is posted. For subclasses; nobody
/// else sends them.
- (void)becomeKeyWindow;
- (void)resignKeyWindow;
/// Tells the views that the event's touches in this window began on.
- (void)sendEvent:(UIEvent *)event;

@end

UIKIT_EXTERN NSNotificationName const UIWindowDidBecomeVisibleNotification;
UIKIT_EXTERN NSNotificationName const UIWindowDidBecomeHiddenNotification;
UIKIT_EXTERN NSNotificationName const UIWindowDidBecomeKeyNotification;
UIKIT_EXTERN NSNotificationName const UIWindowDidResignKeyNotification;
