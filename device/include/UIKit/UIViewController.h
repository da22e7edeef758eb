#pragma once

#import <UIKit/UIApplication.h>
#import <UIKit/UIResponder.h>
#import <UIKit/UIView.h>

@class UINavigationController;

@interface UIViewController : UIResponder {
@private
  UIView *_view;
  NSString *_title;
  UIViewController *_presentedViewController;
  UIViewController *_presentingViewController;
  UINavigationController *_navigationController;
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

- (void)presentViewController:(UIViewController *)controller
                     animated:(BOOL)animated
                   completion:(void (^)(void))completion;
- (void)dismissViewControllerAnimated:(BOOL)animated completion:(void (^)(void))completion;

@property (nonatomic, readonly) BOOL shouldAutorotate;
@property (nonatomic, readonly) BOOL prefersStatusBarHidden;
@property (nonatomic, readonly) UIInterfaceOrientationMask supportedInterfaceOrientations;

@end
