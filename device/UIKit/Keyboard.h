// The keyboard as the application knows it.
#pragma once

#import <UIKit/UIApplication.h>

@interface UIApplication (QVDeviceKeyboard)
// Something is being edited, or no more. The first time, the delegate is asked whether other makers' keyboards may be
// used. This device has none.
- (void)qvdevice_showKeyboard;
- (void)qvdevice_hideKeyboard;
@end
