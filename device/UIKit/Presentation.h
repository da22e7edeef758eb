// Controllers above others, as UIKit's classes see them.
#pragma once

#import <UIKit/UIKit.h>

@interface UIPresentationController (QVDevicePresentation)
// Not retained; nil when the controller goes.
- (void)qvdevice_setPresentedViewController:(UIViewController *)controller;
@end

@interface UIViewController (QVDevicePresentation)
// Whether, once presented, nothing of what is below is on the screen.
- (BOOL)qvdevice_coversWhatIsBelow;
// Of a root controller: those that its window shows, the lowest first.
- (NSArray *)qvdevice_shownFromHere;

// Coming to the screen and leaving it, in two steps each. What is on the screen already, or is not, is told nothing.
- (void)qvdevice_beginToAppear:(BOOL)animated;
- (void)qvdevice_endToAppear:(BOOL)animated;
- (void)qvdevice_beginToDisappear:(BOOL)animated;
- (void)qvdevice_endToDisappear:(BOOL)animated;
@end
