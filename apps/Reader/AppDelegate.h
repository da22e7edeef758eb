#import <UIKit/UIKit.h>

/// An app that looks at whatever others have left on the pasteboard.
@interface AppDelegate : UIResponder <UIApplicationDelegate> {
@private
  UIWindow *_window;
}

@property (nonatomic, retain) UIWindow *window;

@end
