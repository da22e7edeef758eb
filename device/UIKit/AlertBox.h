// The box of an alert: a title, a message, and a button for each action.
#pragma once

#import <UIKit/UIView.h>

@interface QVDeviceAlertBox : UIView

/// `target` is sent `action` with the button that was tapped; its tag is the place of the action in the list.
- (instancetype)initWithTitle:(NSString *)title
                      message:(NSString *)message
                      actions:(NSArray *)actions
                        width:(CGFloat)width
                       target:(id)target
                       action:(SEL)action;

@end
