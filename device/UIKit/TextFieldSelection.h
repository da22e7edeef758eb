// What of a text field is selected, as those who draw it need to know.
#pragma once

#import <UIKit/UITextField.h>

@interface UITextField (QVDeviceSelection)
/// In the text; empty, where the cursor stands, when nothing is.
@property (nonatomic, readonly) NSRange qvdevice_selection;
@end
