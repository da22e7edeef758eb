// What the device itself does with the share sheet that is on the screen.
#pragma once

#import <UIKit/UIActivityViewController.h>

#import "Activities.h"

@interface UIActivityViewController (QVDeviceShareSheet)

/// The sheet on the screen; nil when there is none.
+ (UIActivityViewController *)qvdevice_shown;

/// What the sheet offers, as the user sees it. Settled when the sheet is shown.
@property (nonatomic, readonly) NSArray *qvdevice_offered;

/// What it shares.
@property (nonatomic, readonly) NSArray *qvdevice_items;

/// The user chooses an activity: what follows is what a sheet of this release does, private methods included.
- (void)qvdevice_choose:(UIActivity *)activity;

@end

@interface UIActivityViewController (QVDevicePlatform)

/// The activities that take these items and are not excluded, as the platform finds them; a new mutable array.
- (NSMutableArray *)qvdevice_activitiesForItems:(NSArray *)items;
/// Performs the activity, whatever stands before that in this release.
- (void)qvdevice_perform:(UIActivity *)activity;

@end

@interface UIActivityViewController (QVDeviceReleases)

/// The list as this release makes it, by way of its private methods where it has them.
- (NSArray *)qvdevice_list;
/// Performs, by this release's private methods, what was chosen.
- (void)qvdevice_performChosen:(UIActivity *)activity;

@end
