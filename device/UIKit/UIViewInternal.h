// What UIKit's classes know of each other and apps do not.
#pragma once

#import <UIKit/UIKit.h>

@interface UIView (QVDeviceInternal)
- (void)qvdevice_setController:(UIViewController *)controller;
@end

@interface UIViewController (QVDeviceInternal)
- (void)qvdevice_setNavigationController:(UINavigationController *)controller;
@end

@interface UIWindow (QVDeviceInternal)
// The windows that are shown, from the lowest level to the highest, older ones first within a level.
+ (NSArray *)qvdevice_visibleWindows;
+ (UIWindow *)qvdevice_keyWindow;
// The controller that covers the others, or the window itself: where actions begin while nothing is being edited.
- (UIResponder *)qvdevice_frontmostResponder;
@end
