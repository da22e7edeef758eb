// The states of an app and the steps between them, as the system takes an app through them.
#pragma once

#import <UIKit/UIApplication.h>

@class QVDeviceIncomingURL;

@interface UIApplication (QVDeviceLifecycle)
// From nothing to active, with what the process was launched for.
- (void)qvdevice_launch;
// Each answers nil, or what in the app's state stands against the step.
- (NSString *)qvdevice_becomeActive;
- (NSString *)qvdevice_resignActive;
- (NSString *)qvdevice_enterBackground;
- (NSString *)qvdevice_enterForeground;
// Hands over a URL; an app in the background comes to the foreground for it.
- (void)qvdevice_bringToFrontForURL:(QVDeviceIncomingURL *)incoming;
- (void)qvdevice_terminate __attribute__((noreturn));
@end

@interface UIApplication (QVDeviceState)
- (void)qvdevice_setState:(UIApplicationState)state;
@end
