#pragma once

#import <UIKit/UIViewController.h>

/// Names the view controller of the request that this process serves: it and all that it shows have this context. Once;
/// both live as long as the process.
void QVDeviceSetExtensionRoot(UIViewController* controller, NSExtensionContext* context);
