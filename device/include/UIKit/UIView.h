#pragma once

#import <CoreGraphics/CGGeometry.h>
#import <UIKit/UIResponder.h>

@class CALayer, UIColor, UIEvent, UIViewController, UIWindow;

typedef NS_OPTIONS(NSUInteger, UIViewAutoresizing) {
  UIViewAutoresizingNone = 0,
  UIViewAutoresizingFlexibleLeftMargin = 1 << 0,
  UIViewAutoresizingFlexibleWidth = 1 << 1,
  UIViewAutoresizingFlexibleRightMargin = 1 << 2,
  UIViewAutoresizingFlexibleTopMargin = 1 << 3,
  UIViewAutoresizingFlexibleHeight = 1 << 4,
  UIViewAutoresizingFlexibleBottomMargin = 1 << 5,
};

@interface UIView : UIResponder {
@private
  CGRect _frame;
  CGPoint _boundsOrigin;
  CGFloat _alpha;
  NSInteger _tag;
  UIViewAutoresizing _autoresizingMask;
  UIColor *_backgroundColor;
  CALayer *_layer;
  NSMutableArray *_subviews;
  UIView *_superview;
  UIViewController *_controller;
  BOOL _hidden;
  BOOL _opaque;
  BOOL _userInteractionEnabled;
  BOOL _needsLayout;
  BOOL _keepsSubviewsSizes;
}

- (instancetype)initWithFrame:(CGRect)frame;

@property (nonatomic) CGRect frame;
@property (nonatomic) CGRect bounds;
@property (nonatomic) CGPoint center;
@property (nonatomic) CGFloat alpha;
@property (nonatomic) NSInteger tag;
/// What of the view's place gives when its superview's size changes; the change is shared out in proportion.
@property (nonatomic) UIViewAutoresizing autoresizingMask;
/// YES unless set: subviews follow a change of this view's size as their masks say.
@property (nonatomic) BOOL autoresizesSubviews;
@property (nonatomic, getter=isHidden) BOOL hidden;
@property (nonatomic, getter=isOpaque) BOOL opaque;
@property (nonatomic, getter=isUserInteractionEnabled) BOOL userInteractionEnabled;
@property (nonatomic, copy) UIColor *backgroundColor;
@property (nonatomic, readonly) CALayer *layer;

@property (nonatomic, readonly) UIView *superview;
@property (nonatomic, readonly) NSArray *subviews;
@property (nonatomic, readonly) UIWindow *window;

- (void)addSubview:(UIView *)view;
- (void)insertSubview:(UIView *)view atIndex:(NSInteger)index;
- (void)removeFromSuperview;
- (void)bringSubviewToFront:(UIView *)view;
- (void)sendSubviewToBack:(UIView *)view;
- (BOOL)isDescendantOfView:(UIView *)view;
- (UIView *)viewWithTag:(NSInteger)tag;

- (void)didAddSubview:(UIView *)subview;
- (void)willRemoveSubview:(UIView *)subview;
- (void)willMoveToSuperview:(UIView *)superview;
- (void)didMoveToSuperview;
- (void)willMoveToWindow:(UIWindow *)window;
- (void)didMoveToWindow;

- (void)setNeedsLayout;
- (void)layoutIfNeeded;
- (void)layoutSubviews;
- (void)setNeedsDisplay;

@end

@interface UIView (UIViewGeometry)

/// The view for a touch at `point`, in this view's coordinates: the frontmost in here that is shown and takes touches;
/// nil when there is none.
- (UIView *)hitTest:(CGPoint)point withEvent:(UIEvent *)event;
- (BOOL)pointInside:(CGPoint)point withEvent:(UIEvent *)event;

/// nil stands for the window.
- (CGPoint)convertPoint:(CGPoint)point toView:(UIView *)view;
- (CGPoint)convertPoint:(CGPoint)point fromView:(UIView *)view;
- (CGRect)convertRect:(CGRect)rect toView:(UIView *)view;
- (CGRect)convertRect:(CGRect)rect fromView:(UIView *)view;

@end
