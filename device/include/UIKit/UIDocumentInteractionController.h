#pragma once

#import <UIKit/UIView.h>

@class UIDocumentInteractionController;

@protocol UIDocumentInteractionControllerDelegate <NSObject>
@optional
- (void)documentInteractionController:(UIDocumentInteractionController *)controller
        willBeginSendingToApplication:(NSString *)application;
- (void)documentInteractionController:(UIDocumentInteractionController *)controller
           didEndSendingToApplication:(NSString *)application;
- (void)documentInteractionControllerDidDismissOpenInMenu:(UIDocumentInteractionController *)controller;
@end

/// Lets the user choose another app of the device that opens a document. Main thread only.
@interface UIDocumentInteractionController : NSObject {
@private
  NSURL *_URL;
  id<UIDocumentInteractionControllerDelegate> _delegate;
  NSArray *_offered;
}

+ (UIDocumentInteractionController *)interactionControllerWithURL:(NSURL *)url;

@property (nonatomic, retain) NSURL *URL;
@property (nonatomic, assign) id<UIDocumentInteractionControllerDelegate> delegate;

/// NO, and nothing is shown, when there is no app to be offered.
- (BOOL)presentOpenInMenuFromRect:(CGRect)rect inView:(UIView *)view animated:(BOOL)animated;
- (void)dismissMenuAnimated:(BOOL)animated;

@end
