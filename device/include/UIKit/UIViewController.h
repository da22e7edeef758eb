#pragma once

#import <UIKit/UIApplication.h>
#import <UIKit/UIResponder.h>
#import <UIKit/UIView.h>

@class UINavigationController, UIPopoverPresentationController;

typedef NS_ENUM(NSInteger, UIModalPresentationStyle) {
  UIModalPresentationFullScreen = 0,
  UIModalPresentationPageSheet,
  UIModalPresentationFormSheet,
  UIModalPresentationCurrentContext,
  UIModalPresentationCustom,
  UIModalPresentationOverFullScreen,
  UIModalPresentationOverCurrentContext,
  UIModalPresentationPopover,
  UIModalPresentationNone = -1,
  UIModalPresentationAutomatic = -2,
};

@interface UIViewController : UIResponder {
@private
  UIView *_view;
  NSString *_title;
  UIViewController *_presentedViewController;
  UIViewController *_presentingViewController;
  UINavigationController *_navigationController;
  UIPopoverPresentationController *_popoverPresentationController;
  UIModalPresentationStyle _modalPresentationStyle;
  BOOL _onScreen;
  BOOL _appearing;
}

- (instancetype)initWithNibName:(NSString *)nibName bundle:(NSBundle *)bundle;

@property (nonatomic, retain) UIView *view;
@property (nonatomic, copy) NSString *title;
@property (nonatomic, readonly, getter=isViewLoaded) BOOL viewLoaded;
@property (nonatomic, readonly) UIViewController *presentedViewController;
@property (nonatomic, readonly) UIViewController *presentingViewController;

- (void)loadView;
- (void)loadViewIfNeeded;
- (void)viewDidLoad;
- (void)viewWillAppear:(BOOL)animated;
- (void)viewDidAppear:(BOOL)animated;
- (void)viewWillDisappear:(BOOL)animated;
- (void)viewDidDisappear:(BOOL)animated;
- (void)didReceiveMemoryWarning;

/// How the controller is presented. Unless set: over the whole screen up to release 12, which takes what is below off
/// the screen and tells it so; on a sheet from 13 on.
@property (nonatomic) UIModalPresentationStyle modalPresentationStyle;
/// nil unless the style is UIModalPresentationPopover.
@property (nonatomic, readonly) UIPopoverPresentationController *popoverPresentationController;

- (void)presentViewController:(UIViewController *)controller
                     animated:(BOOL)animated
                   completion:(void (^)(void))completion;
/// Takes away what this controller presents and all that is above it; asked of one that presents nothing, itself.
- (void)dismissViewControllerAnimated:(BOOL)animated completion:(void (^)(void))completion;

@property (nonatomic, readonly) BOOL prefersStatusBarHidden;

@end

@interface UIViewController (UIViewControllerRotation)

/// Lets each window turn to the way the device is held, as if the user had turned it now.
+ (void)attemptRotationToDeviceOrientation;

/// Asked from release 6 on of the controller that fills the frontmost window.
@property (nonatomic, readonly) BOOL shouldAutorotate;
@property (nonatomic, readonly) UIInterfaceOrientationMask supportedInterfaceOrientations;
/// Asked before release 6.
- (BOOL)shouldAutorotateToInterfaceOrientation:(UIInterfaceOrientation)orientation;

/// Told to the root controller of each window that turns.
- (void)willRotateToInterfaceOrientation:(UIInterfaceOrientation)orientation duration:(NSTimeInterval)duration;
- (void)didRotateFromInterfaceOrientation:(UIInterfaceOrientation)orientation;
@property (nonatomic, readonly) UIInterfaceOrientation interfaceOrientation;

@end

@interface UIViewController (NSExtensionAdditions)

/// In an extension's process, for its view controller and what that shows: the request that is served; else nil.
@property (nonatomic, readonly) NSExtensionContext *extensionContext;

@end
