#import "InputModes.h"

#import <UIKit/UIResponder.h>

#import <QVDevice/QVDevice.h>

NSNotificationName const UITextInputCurrentInputModeDidChangeNotification =
    @"UITextInputCurrentInputModeDidChangeNotification";

namespace {

BOOL dictating;
BOOL announcing;

} // namespace

@interface UITextInputMode (Making)
- (id)initWithPrimaryLanguage:(NSString *)language;
@end

@implementation UIKeyboardInputMode

- (id)initWithIdentifier:(NSString *)identifier primaryLanguage:(NSString *)language {
  if ((self = [super initWithPrimaryLanguage:language])) _identifier = [identifier copy];
  return self;
}

- (void)dealloc {
  [_identifier release];
  [super dealloc];
}

@synthesize identifier = _identifier;

@end

namespace {

UITextInputMode *keyboard() {
  static UITextInputMode *const mode = [[UIKeyboardInputMode alloc] initWithIdentifier:@"en_US@sw=QWERTY;hw=Automatic"
                                                                       primaryLanguage:@"en-US"];
  return mode;
}

UITextInputMode *dictation() {
  static UITextInputMode *const mode = [[UIKeyboardInputMode alloc] initWithIdentifier:@"dictation"
                                                                       primaryLanguage:@"dictation"];
  return mode;
}

} // namespace

@implementation UITextInputMode

- (id)initWithPrimaryLanguage:(NSString *)language {
  if ((self = [super init])) _primaryLanguage = [language copy];
  return self;
}

- (void)dealloc {
  [_primaryLanguage release];
  [super dealloc];
}

@synthesize primaryLanguage = _primaryLanguage;

+ (UITextInputMode *)currentInputMode {
  return dictating ? dictation() : keyboard();
}

+ (NSArray *)activeInputModes {
  return [NSArray arrayWithObjects:keyboard(), dictation(), nil];
}

@end

@implementation UITextInputMode (QVDeviceInputModes)

+ (BOOL)qvdevice_isDictating {
  return dictating;
}

+ (void)qvdevice_setDictating:(BOOL)dictate {
  if (dictate == dictating) return;
  dictating = dictate;
  QVDeviceTrace(@{@"kind" : @"input", @"event" : dictate ? @"dictationBegan" : @"keyboard"});
  announcing = YES;
  @try {
    [[NSNotificationCenter defaultCenter] postNotificationName:UITextInputCurrentInputModeDidChangeNotification
                                                        object:nil];
  } @finally {
    announcing = NO;
  }
}

// Not before everyone has been told of the mode that is to go: one of them may be why editing ended.
+ (void)qvdevice_editingEnded {
  if (!announcing) [self qvdevice_setDictating:NO];
}

@end

@implementation UIResponder (UIResponderInputViewAdditions)

- (UITextInputMode *)textInputMode {
  return [UITextInputMode currentInputMode];
}

@end
