// Plays the SDK with policies that a test sets, and shows share sheets and the like over a window.
#pragma once

#import <UIKit/UIKit.h>

#include <map>
#include <string>
#include <vector>

/// Answers with what has been set.
@interface QVSharingSDK : NSObject {
@public
  BOOL ready;
  NSInteger openInPolicy;
  NSInteger pasteboardPolicy;
  NSInteger printPolicy;
  NSArray *openInWhitelist;
  int questions;              // whether it is ready
  int questionsAboutPrinting; // its print policy
}
@end

@interface NSObject (QVSharingPolicyObject)
+ (id)instance;
- (void)setZorbel:(id)zorbel;
- (NSArray *)mergeExcludedActivityTypes:(NSArray *)types;
@end

/// The private methods, as the platform's own code knows them, and what the library adds.
@interface UIActivityViewController (QVSharingPrivate)
- (id)_availableActivitiesForItems:(id)items;
- (id)_availableActivities;
- (void)_performActivityOfType:(id)type;
- (void)_performActivity:(id)activity;
- (void)shareExtensionServiceWillPerformInServiceActivityWithDataRequest:(id)request
                                                     dismissPresentation:(BOOL)dismiss
                                                              completion:(void (^)(id data))completion;
- (void)shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:(id)identifier;
- (id)arrayByFilteringBlockedActivities:(id)activities;
- (NSString *)appIdentifierByStrippingIOSPart:(NSString *)type;
- (NSArray *)qvdevice_offered;
- (void)qvdevice_choose:(id)activity;
@end

namespace sharing {

/// The SDK, which the library's policy object asks from now on: ready, and forbidding everything.
QVSharingSDK *startSDK();
void stopSDK(QVSharingSDK *sdk);

/// The device's folder (QVDEVICE_DEVICE).
std::string deviceFolder();

/// A file in the container's documents.
NSURL *file(NSString *name, NSString *text);

/// A window on the screen whose controller shows sheets. One a process.
UIViewController *presenter();

/// Every activity that the platform knows, offered or not; new objects.
NSArray *allActivities();

/// What left the app since it was last asked: paths on the device, and "pasteboard". Empties all of them.
std::vector<std::string> whatLeft();

std::vector<std::string> typesOf(NSArray *activities);

} // namespace sharing
