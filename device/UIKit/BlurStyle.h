// The style of a blur, as those who draw it need to know.
#pragma once

#import <UIKit/UIVisualEffectView.h>

@interface UIBlurEffect (QVDeviceBlurStyle)
@property (nonatomic, readonly) UIBlurEffectStyle qvdevice_style;
@end
