#pragma once

#import <CoreGraphics/CGGeometry.h>
#import <Foundation/Foundation.h>

@class UIView, UIViewController;

/// How one controller comes to be above another.
@interface UIPresentationController : NSObject {
@private
  UIViewController *_presentedViewController;
}

/// Not retained.
@property (nonatomic, readonly) UIViewController *presentedViewController;
@property (nonatomic, readonly) UIViewController *presentingViewController;

@end

/// The same as a popover: on a pad it points at something, and where it points to must be set before it is presented.
@interface UIPopoverPresentationController : UIPresentationController {
@private
  UIView *_sourceView;
  CGRect _sourceRect;
  id _barButtonItem;
}

@property (nonatomic, retain) UIView *sourceView;
/// In the source view's coordinates; the whole view unless set.
@property (nonatomic) CGRect sourceRect;
@property (nonatomic, retain) id barButtonItem;

@end
