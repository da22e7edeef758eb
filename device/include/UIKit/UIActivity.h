#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

typedef NSString *UIActivityType;

UIKIT_EXTERN UIActivityType const UIActivityTypePostToFacebook;
UIKIT_EXTERN UIActivityType const UIActivityTypePostToTwitter;
UIKIT_EXTERN UIActivityType const UIActivityTypePostToWeibo;
UIKIT_EXTERN UIActivityType const UIActivityTypeMessage;
UIKIT_EXTERN UIActivityType const UIActivityTypeMail;
UIKIT_EXTERN UIActivityType const UIActivityTypePrint;
UIKIT_EXTERN UIActivityType const UIActivityTypeCopyToPasteboard;
UIKIT_EXTERN UIActivityType const UIActivityTypeAssignToContact;
UIKIT_EXTERN UIActivityType const UIActivityTypeSaveToCameraRoll;
UIKIT_EXTERN UIActivityType const UIActivityTypeAddToReadingList;
UIKIT_EXTERN UIActivityType const UIActivityTypePostToFlickr;
UIKIT_EXTERN UIActivityType const UIActivityTypePostToVimeo;
UIKIT_EXTERN UIActivityType const UIActivityTypePostToTencentWeibo;
UIKIT_EXTERN UIActivityType const UIActivityTypeAirDrop;
@class UIViewController;

/// Something that can be done with an app's data from a share sheet. Apps derive their own from it. Main thread only.
@interface UIActivity : NSObject {
@private
  void (^_qvdevice_finished)(BOOL);
}

/// What the activity is known by; nil unless a subclass names itself.
@property (nonatomic, readonly) UIActivityType activityType;
/// What the sheet shows.
@property (nonatomic, readonly) NSString *activityTitle;

- (BOOL)canPerformWithActivityItems:(NSArray *)activityItems;
- (void)prepareWithActivityItems:(NSArray *)activityItems;
/// Ends with activityDidFinish:, now or later.
- (void)performActivity;
- (void)activityDidFinish:(BOOL)completed;

@end
