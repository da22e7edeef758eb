#pragma once

#import <UIKit/UIViewController.h>

/// Names the view controller of the request that this process serves: it and all that it shows have this context. Once;
/// both live as long as the process.
void QVDeviceSetExtensionRoot(UIViewController* controller, NSExtensionContext* context);

/// That view controller; nil in a process that is no extension's.
UIViewController* QVDeviceExtensionRoot(void);
