// What whoever runs the app can ask for: each function names the handlers of its commands.
#pragma once

#import <UIKit/UIApplication.h>

// The steps of an app's life.
void QVDeviceTakeLifecycleCommands(UIApplication* application);

// What the user and other apps do.
void QVDeviceTakeInputCommands(UIApplication* application);

// What the user does with a share sheet, an open-in menu and the edit menu.
void QVDeviceTakeMenuCommands(UIApplication* application);

// What happens to the windows: an alert comes up, the app shows another window, the user turns the device.
void QVDeviceTakeWindowCommands(UIApplication* application);

// A picture of the screen.
void QVDeviceTakeScreenCommand(UIApplication* application);
