#import <UIKit/UIKit.h>

/// An app whose user copies something that is not meant for others.
@interface AppDelegate : UIResponder <UIApplicationDelegate> {
@private
  UIWindow *_window;
}

@property (nonatomic, retain) UIWindow *window;

/// Copies a confidential text and a link, as an app does for its user.
- (void)copySecret:(id)sender;

@end
