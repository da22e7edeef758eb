// What of a font only those who draw with it need to know.
#pragma once

#import <UIKit/UIFont.h>

@interface UIFont (QVDeviceFont)
@property (nonatomic, readonly) UIFontWeight qvdevice_weight;
@end
