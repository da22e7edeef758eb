// The windows that the system itself puts over an app's. Other code knows them by name.
#pragma once

#import <UIKit/UIWindow.h>

// The keyboard's: there while something is being edited, above all else, and never the key window. Its keys are pressed
// by whoever drives the device, so no touch ends here.
@interface UITextEffectsWindow : UIWindow
+ (UITextEffectsWindow *)sharedTextEffectsWindow;
@end

// That of an alert which is not presented on one of the app's controllers.
@interface _UIAlertControllerShimPresenterWindow : UIWindow
@end
