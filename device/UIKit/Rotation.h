// The way the device is held, and the way up in which the app is shown.
#pragma once

#import <UIKit/UIKit.h>

@interface UIDevice (QVDeviceRotation)
// The user turns the device.
- (void)qvdevice_setOrientation:(UIDeviceOrientation)orientation;
@end

@interface UIApplication (QVDeviceRotation)
// Turns what is shown to the way the device is held, if the app lets it.
- (void)qvdevice_followDeviceOrientation;
@end

@interface UIApplication (QVDeviceOrientation)
- (void)qvdevice_setStatusBarOrientation:(UIInterfaceOrientation)orientation;
@end
