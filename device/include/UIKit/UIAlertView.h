#pragma once

#import <UIKit/UIView.h>

@class UIAlertController, UIAlertView;

@protocol UIAlertViewDelegate <NSObject>
@optional
- (void)alertView:(UIAlertView *)alertView clickedButtonAtIndex:(NSInteger)buttonIndex;
- (void)alertView:(UIAlertView *)alertView didDismissWithButtonIndex:(NSInteger)buttonIndex;
@end

/// An alert in a window of its own. It lives as long as it is shown.
@interface UIAlertView : UIView {
@private
  NSString *_title;
  NSString *_message;
  NSMutableArray *_buttons;
  NSInteger _cancelButtonIndex;
  id<UIAlertViewDelegate> _delegate;
  UIAlertController *_alertController;
  UIWindow *_shimWindow;
}

/// The button that cancels, when there is one, is the first.
- (instancetype)initWithTitle:(NSString *)title
                      message:(NSString *)message
                     delegate:(id<UIAlertViewDelegate>)delegate
            cancelButtonTitle:(NSString *)cancelButtonTitle
            otherButtonTitles:(NSString *)otherButtonTitles, ... NS_REQUIRES_NIL_TERMINATION;

@property (nonatomic, assign) id<UIAlertViewDelegate> delegate;
@property (nonatomic, copy) NSString *title;
@property (nonatomic, copy) NSString *message;
@property (nonatomic, readonly) NSInteger numberOfButtons;
/// -1 without such a button.
@property (nonatomic, readonly) NSInteger cancelButtonIndex;
@property (nonatomic, readonly, getter=isVisible) BOOL visible;

- (NSInteger)addButtonWithTitle:(NSString *)title;
- (NSString *)buttonTitleAtIndex:(NSInteger)buttonIndex;

- (void)show;
- (void)dismissWithClickedButtonIndex:(NSInteger)buttonIndex animated:(BOOL)animated;

@end
