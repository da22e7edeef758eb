// How the device makes the touches and events of which apps are only told.
#pragma once

#import "UIViewInternal.h"

@interface UITouch (QVDeviceTouch)
// A touch that begins at a point of the screen, on the view that lies there; on none where no window is shown.
+ (UITouch *)qvdevice_touchAtPoint:(CGPoint)point;
- (void)qvdevice_setPhase:(UITouchPhase)phase;
@end

@interface UIEvent (QVDeviceEvent)
+ (UIEvent *)qvdevice_eventWithTouch:(UITouch *)touch;
@end
