#pragma once

#import <CoreGraphics/CGGeometry.h>
#import <UIKit/UIResponder.h>

@class UIView;

/// An entry that an app adds to the edit menu.
@interface UIMenuItem : NSObject {
@private
  NSString *_title;
  SEL _action;
}

- (instancetype)initWithTitle:(NSString *)title action:(SEL)action;

@property (nonatomic, copy) NSString *title;
@property (nonatomic) SEL action;

@end

/// The edit menu: what can be done with what is selected. Main thread only.
@interface UIMenuController : NSObject {
@private
  NSArray *_menuItems;
}

+ (UIMenuController *)sharedMenuController;

/// The app's own entries; nil for none.
@property (nonatomic, copy) NSArray *menuItems;
@property (nonatomic, getter=isMenuVisible) BOOL menuVisible;

- (void)setMenuVisible:(BOOL)visible animated:(BOOL)animated;
- (void)setTargetRect:(CGRect)rect inView:(UIView *)view;
/// Looks anew for what can be done.
- (void)update;

@end

/// What the system's entries send. Each is offered only where somebody in the chain of the first responder performs it.
@protocol UIResponderStandardEditActions <NSObject>
@optional
- (void)cut:(id)sender;
- (void)copy:(id)sender;
- (void)paste:(id)sender;
- (void)select:(id)sender;
- (void)selectAll:(id)sender;
@end
