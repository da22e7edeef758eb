#pragma once

#import <UIKit/UITextField.h>

namespace qvdevice {

/// Where what is selected is drawn, or the cursor, in the field's coordinates.
CGRect placeOfSelection(UITextField *field);

} // namespace qvdevice
