// Whether a user can do anything to the app.
#pragma once

#import <Foundation/Foundation.h>

@class UIApplication;

// Only an app that is on the screen and not covered hears of its user: nil, or why it does not.
NSString *QVDeviceNotUsable(UIApplication *application);
