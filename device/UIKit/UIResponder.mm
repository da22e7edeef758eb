#import "FirstResponder.h"

#import "InputModes.h"
#import "Keyboard.h"

namespace {
// One app has one first responder; it is not kept alive by being that.
UIResponder *firstResponder;
} // namespace

@implementation UIResponder

- (void)dealloc {
  if (firstResponder == self) firstResponder = nil;
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
  if (firstResponder && ![firstResponder resignFirstResponder]) return NO;
  firstResponder = self;
  [self qvdevice_didBecomeFirstResponder];
  return YES;
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
  if ([self respondsToSelector:@selector(insertText:)]) [[UIApplication sharedApplication] qvdevice_keyboardIsShown];
}

// The keyboard goes with the one that it wrote into.
- (void)qvdevice_didResignFirstResponder {
  [UITextInputMode qvdevice_editingEnded];
}

@end
