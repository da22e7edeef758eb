// The keyboard and its ways of entering text.
#pragma once

#import <UIKit/UITextInput.h>

// The platform's own subclass; what it adds is not for apps to see.
@interface UIKeyboardInputMode : UITextInputMode {
@private
  NSString *_identifier;
}
@property (nonatomic, readonly) NSString *identifier;
@end

@interface UITextInputMode (QVDeviceInputModes)
+ (BOOL)qvdevice_isDictating;
// Begins dictation or goes back to the keyboard, and tells those who watch for that when it changes anything.
+ (void)qvdevice_setDictating:(BOOL)dictating;
// Ends dictation: there is nobody left to dictate to.
+ (void)qvdevice_editingEnded;
@end
