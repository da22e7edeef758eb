// The states of an app and the steps between them, as the system takes an app through them.
#pragma once

#import <UIKit/UIApplication.h>

@interface UIApplication (QVDeviceLifecycle)
- (void)qvdevice_finishLaunchingWithOptions:(NSDictionary *)options;
// Each answers nil, or what in the app's state stands against the step.
- (NSString *)qvdevice_becomeActive;
- (NSString *)qvdevice_resignActive;
- (NSString *)qvdevice_enterBackground;
- (NSString *)qvdevice_enterForeground;
- (void)qvdevice_terminate __attribute__((noreturn));
@end

@interface UIApplication (QVDeviceState)
- (void)qvdevice_setState:(UIApplicationState)state;
@end
