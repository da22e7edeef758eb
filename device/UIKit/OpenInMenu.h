// What the device itself does with the open-in menu that is on the screen.
#pragma once

#import <UIKit/UIDocumentInteractionController.h>

@class LSApplicationProxy;

@interface UIDocumentInteractionController (Private)
/// The apps that can open the document: a mutable array of LSApplicationProxy.
- (id)_applications:(BOOL)all;
@end

@interface UIDocumentInteractionController (QVDeviceOpenInMenu)

/// The one whose menu is on the screen; nil when there is none.
+ (UIDocumentInteractionController *)qvdevice_shown;
@property (nonatomic, readonly) NSArray *qvdevice_offered;
/// The user chooses an app.
- (void)qvdevice_choose:(LSApplicationProxy *)application;

@end
