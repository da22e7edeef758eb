#pragma once

#import <UIKit/UIControl.h>
#import <UIKit/UIMenuController.h>
#import <UIKit/UITextInput.h>

@class UITextField;

@protocol UITextFieldDelegate <NSObject>
@optional
- (BOOL)textFieldShouldBeginEditing:(UITextField *)textField;
- (void)textFieldDidBeginEditing:(UITextField *)textField;
- (BOOL)textFieldShouldEndEditing:(UITextField *)textField;
- (void)textFieldDidEndEditing:(UITextField *)textField;
- (BOOL)textField:(UITextField *)textField
    shouldChangeCharactersInRange:(NSRange)range
                replacementString:(NSString *)string;
- (BOOL)textFieldShouldReturn:(UITextField *)textField;
@end

/// A line of text that the user edits at its end, or where it is selected: without a display there is no cursor to be
/// moved. What is selected is chosen, and copied, with the actions of the edit menu.
@interface UITextField : UIControl <UIKeyInput, UIResponderStandardEditActions> {
@private
  NSString *_text;
  NSString *_placeholder;
  id<UITextFieldDelegate> _delegate;
  BOOL _secureTextEntry;
  NSRange _selection;
}

@property (nonatomic, copy) NSString *text;
@property (nonatomic, copy) NSString *placeholder;
@property (nonatomic, assign) id<UITextFieldDelegate> delegate;
@property (nonatomic, readonly, getter=isEditing) BOOL editing;
@property (nonatomic, getter=isSecureTextEntry) BOOL secureTextEntry;

@end

@interface UIView (UITextField)
/// Takes the first responder's role from whichever view in here has it, with `force` also against its will. NO when
/// none gave it up.
- (BOOL)endEditing:(BOOL)force;
@end

UIKIT_EXTERN NSNotificationName const UITextFieldTextDidBeginEditingNotification;
UIKIT_EXTERN NSNotificationName const UITextFieldTextDidEndEditingNotification;
UIKIT_EXTERN NSNotificationName const UITextFieldTextDidChangeNotification;
