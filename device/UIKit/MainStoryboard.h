// The first window of an app whose Info.plist names a main storyboard.
#pragma once

#import <UIKit/UIApplication.h>

@interface UIApplication (QVDeviceMainStoryboard)
// Makes the window and gives it to the delegate; nil without a main storyboard, or when the delegate takes no
// window.
- (UIWindow *)qvdevice_makeStoryboardWindow;
- (void)qvdevice_showStoryboardWindow:(UIWindow *)window;
@end
