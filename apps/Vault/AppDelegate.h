#import <UIKit/UIKit.h>

@interface AppDelegate : UIResponder <UIApplicationDelegate> {
  UIWindow *_window;
}

@property (nonatomic, retain) UIWindow *window;

@end
