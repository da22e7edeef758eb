#import "Keyboard.h"

#import "SystemWindows.h"

#import <UIKit/UIDevice.h>

#import <QVDevice/QVDevice.h>

namespace {

// The system that first let other makers' keyboards in.
constexpr NSInteger extensionsVersion = 8;

} // namespace

@implementation UIApplication (QVDeviceKeyboard)

- (void)qvdevice_showKeyboard {
  [self qvdevice_askForKeyboards];
  [[UITextEffectsWindow sharedTextEffectsWindow] setHidden:NO];
}

- (void)qvdevice_hideKeyboard {
  // Not the shared one, which is first made when it is needed.
  for (UIWindow *window in [self windows])
    if ([window isKindOfClass:[UITextEffectsWindow class]]) [window setHidden:YES];
}

- (void)qvdevice_askForKeyboards {
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
