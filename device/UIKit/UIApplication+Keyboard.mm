#import "Keyboard.h"

#import <UIKit/UIDevice.h>

#import <QVDevice/QVDevice.h>

namespace {

// The system that first let other makers' keyboards in.
constexpr NSInteger extensionsVersion = 8;

} // namespace

@implementation UIApplication (QVDeviceKeyboard)

- (void)qvdevice_keyboardIsShown {
  static BOOL asked;
  if (asked || [[[UIDevice currentDevice] systemVersion] integerValue] < extensionsVersion) return;
  if (![_delegate respondsToSelector:@selector(application:shouldAllowExtensionPointIdentifier:)]) return;
  asked = YES;
  const BOOL allowed = [_delegate application:self
          shouldAllowExtensionPointIdentifier:UIApplicationKeyboardExtensionPointIdentifier];
  QVDeviceTrace(
      @{@"kind" : @"input", @"event" : @"keyboardExtensions", @"allowed" : [NSNumber numberWithBool:allowed]});
}

@end
