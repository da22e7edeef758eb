// What UIKit's classes know of each other and apps do not.
#pragma once

#import <UIKit/UIKit.h>

@interface UIView (QVDeviceInternal)
- (void)qvdevice_setController:(UIViewController *)controller;
@end

@interface UIView (QVDeviceAutoresizing)
// Lets the subviews follow a change of this view's size from `before`.
- (void)qvdevice_resizeSubviewsFrom:(CGSize)before;
@end

@interface UIViewController (QVDeviceInternal)
- (void)qvdevice_setNavigationController:(UINavigationController *)controller;
@end

@interface UIWindow (QVDeviceInternal)
// From the lowest level to the highest, the frontmost of each level last: all windows, and those that are shown.
+ (NSArray *)qvdevice_windows;
+ (NSArray *)qvdevice_visibleWindows;
+ (UIWindow *)qvdevice_keyWindow;
// The controller that covers the others, or the window itself: where actions begin while nothing is being edited.
- (UIResponder *)qvdevice_frontmostResponder;
// The root controller, or the uppermost of those above it that leave nothing else on the screen.
- (UIViewController *)qvdevice_controllerThatFillsIt;
// NO for a window that shows only what belongs to what is being done in another.
- (BOOL)qvdevice_canBecomeKey;
// NO for the system's own windows that come and go over the app's.
- (BOOL)qvdevice_decidesOnRotation;
@end
