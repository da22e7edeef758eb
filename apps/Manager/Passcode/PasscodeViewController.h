#import <UIKit/UIKit.h>

/// A keypad. The passcode is 2580; OK answers whether it was typed. The other buttons are for those who want to see
/// what becomes of an app whose passcode extension does not do what it should.
@interface PasscodeViewController : UIViewController {
  NSMutableString *_typed;
  UILabel *_dots;
  BOOL _withMessage;
}
@end
