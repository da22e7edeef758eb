// The responder that the keyboard writes into, as UIKit's classes see it.
#pragma once

#import <UIKit/UIResponder.h>

@interface UIResponder (QVDeviceFirstResponder)
+ (UIResponder *)qvdevice_firstResponder;
// Takes the role from the receiver without asking it.
- (void)qvdevice_loseFirstResponder;
// Sent to the one that the role came to or went from, afterwards.
- (void)qvdevice_didBecomeFirstResponder;
- (void)qvdevice_didResignFirstResponder;
@end
