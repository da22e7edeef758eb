#import "FirstResponder.h"

#import "InputModes.h"
#import "Keyboard.h"

namespace {
// One app has one first responder; it is not kept alive by being that.
UIResponder *firstResponder;
// While the role goes from one to the next: who will have it. The keyboard stays for one that takes text, too.
UIResponder *next;

bool takesText(UIResponder *responder) { return [responder respondsToSelector:@selector(insertText:)]; }

void hideKeyboard() { [[UIApplication sharedApplication] qvdevice_hideKeyboard]; }
} // namespace

@implementation UIResponder

- (void)dealloc {
  if (firstResponder == self) {
    firstResponder = nil;
    if (takesText(self)) hideKeyboard();
  }
  [super dealloc];
}

- (UIResponder *)nextResponder {
  return nil;
}

- (BOOL)canBecomeFirstResponder {
  return NO;
}

- (BOOL)canResignFirstResponder {
  return YES;
}

- (BOOL)isFirstResponder {
  return firstResponder == self;
}

- (BOOL)becomeFirstResponder {
  if (firstResponder == self) return YES;
  if (![self canBecomeFirstResponder]) return NO;
  if (![self qvdevice_takeOverFromFirstResponder]) return NO;
  firstResponder = self;
  [self qvdevice_didBecomeFirstResponder];
  return YES;
}

- (BOOL)qvdevice_takeOverFromFirstResponder {
  if (!firstResponder) return YES;
  UIResponder *const before = next;
  next = self;
  @try {
    return [firstResponder resignFirstResponder];
  } @finally {
    next = before;
  }
}

- (BOOL)resignFirstResponder {
  if (firstResponder != self) return YES;
  if (![self canResignFirstResponder]) return NO;
  [self qvdevice_loseFirstResponder];
  return YES;
}

// Events that a responder does not care for go up its chain.
- (void)touchesBegan:(NSSet *)touches withEvent:(UIEvent *)event {
  [[self nextResponder] touchesBegan:touches withEvent:event];
}

- (void)touchesMoved:(NSSet *)touches withEvent:(UIEvent *)event {
  [[self nextResponder] touchesMoved:touches withEvent:event];
}

- (void)touchesEnded:(NSSet *)touches withEvent:(UIEvent *)event {
  [[self nextResponder] touchesEnded:touches withEvent:event];
}

- (void)touchesCancelled:(NSSet *)touches withEvent:(UIEvent *)event {
  [[self nextResponder] touchesCancelled:touches withEvent:event];
}

- (BOOL)canPerformAction:(SEL)action withSender:(id)sender {
  (void)sender;
  return [self respondsToSelector:action];
}

- (id)targetForAction:(SEL)action withSender:(id)sender {
  for (UIResponder *responder = self; responder; responder = [responder nextResponder])
    if ([responder canPerformAction:action withSender:sender]) return responder;
  return nil;
}

@end

@implementation UIResponder (QVDeviceFirstResponder)

+ (UIResponder *)qvdevice_firstResponder {
  return firstResponder;
}

- (void)qvdevice_loseFirstResponder {
  if (firstResponder != self) return;
  firstResponder = nil;
  [self qvdevice_didResignFirstResponder];
}

- (void)qvdevice_didBecomeFirstResponder {
  if (takesText(self)) [[UIApplication sharedApplication] qvdevice_showKeyboard];
}

// The keyboard goes with the one that it wrote into.
- (void)qvdevice_didResignFirstResponder {
  [UITextInputMode qvdevice_editingEnded];
  if (takesText(self) && !takesText(next)) hideKeyboard();
}

@end
