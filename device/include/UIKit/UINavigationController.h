#pragma once

#import <UIKit/UIViewController.h>

@interface UINavigationController : UIViewController {
@private
  NSMutableArray *_controllers;
  BOOL _appeared;
}

- (instancetype)initWithRootViewController:(UIViewController *)rootViewController;

/// From the first to the one that is shown.
@property (nonatomic, copy) NSArray *viewControllers;
@property (nonatomic, readonly) UIViewController *topViewController;
/// What the top controller presents, or the top controller.
@property (nonatomic, readonly) UIViewController *visibleViewController;

- (void)setViewControllers:(NSArray *)viewControllers animated:(BOOL)animated;
- (void)pushViewController:(UIViewController *)viewController animated:(BOOL)animated;
/// nil, with nothing done, when only one is left.
- (UIViewController *)popViewControllerAnimated:(BOOL)animated;
- (NSArray *)popToViewController:(UIViewController *)viewController animated:(BOOL)animated;
- (NSArray *)popToRootViewControllerAnimated:(BOOL)animated;

@end

@interface UIViewController (UINavigationControllerItem)
@property (nonatomic, readonly) UINavigationController *navigationController;
@end
