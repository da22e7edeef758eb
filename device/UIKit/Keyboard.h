// What the application is told of the keyboard.
#pragma once

#import <UIKit/UIApplication.h>

@interface UIApplication (QVDeviceKeyboard)
// The first time, the delegate is asked whether other makers' keyboards may be used. This device has none.
- (void)qvdevice_keyboardIsShown;
@end
