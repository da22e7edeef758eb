// The bar over what is selected, with its buttons. The class is the platform's own: apps know of UIMenuController only.
#pragma once

#import <UIKit/UIView.h>

@interface UICalloutBar : UIView {
@private
  NSArray *_entries;
}

+ (UICalloutBar *)sharedCalloutBar;

/// Who does it, from the first responder on; nil when nobody does, and then the bar does not offer it.
- (id)targetForAction:(SEL)action;

/// Looks for what can be done and is offered from now on.
- (void)update;
/// What is offered: UIMenuItem, the system's own included, in the order of the bar.
@property (nonatomic, readonly) NSArray *entries;

@end
