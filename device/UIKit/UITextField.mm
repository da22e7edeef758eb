#import <UIKit/UIKit.h>

#import "FirstResponder.h"
#import "TextFieldSelection.h"

NSNotificationName const UITextFieldTextDidBeginEditingNotification = @"UITextFieldTextDidBeginEditingNotification";
NSNotificationName const UITextFieldTextDidEndEditingNotification = @"UITextFieldTextDidEndEditingNotification";
NSNotificationName const UITextFieldTextDidChangeNotification = @"UITextFieldTextDidChangeNotification";

@implementation UITextField

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) _text = @"";
  return self;
}

- (void)dealloc {
  [_text release];
  [_placeholder release];
  [super dealloc];
}

@synthesize placeholder = _placeholder;
@synthesize delegate = _delegate;
@synthesize secureTextEntry = _secureTextEntry;

- (NSString *)text {
  return [[_text retain] autorelease];
}

- (void)setText:(NSString *)text {
  NSString *const before = _text;
  _text = text ? [text copy] : @"";
  _selection = NSMakeRange([_text length], 0);
  [before release];
}

- (BOOL)isEditing {
  return [self isFirstResponder];
}

- (BOOL)canBecomeFirstResponder {
  return [self isEnabled];
}

- (BOOL)becomeFirstResponder {
  if (![self isFirstResponder] && [_delegate respondsToSelector:@selector(textFieldShouldBeginEditing:)] &&
      ![_delegate textFieldShouldBeginEditing:self])
    return NO;
  return [super becomeFirstResponder];
}

- (BOOL)canResignFirstResponder {
  return ![_delegate respondsToSelector:@selector(textFieldShouldEndEditing:)] ||
         [_delegate textFieldShouldEndEditing:self];
}

- (void)post:(NSString *)notification {
  [[NSNotificationCenter defaultCenter] postNotificationName:notification object:self];
}

- (void)qvdevice_didBecomeFirstResponder {
  [super qvdevice_didBecomeFirstResponder];
  if ([_delegate respondsToSelector:@selector(textFieldDidBeginEditing:)]) [_delegate textFieldDidBeginEditing:self];
  [self sendActionsForControlEvents:UIControlEventEditingDidBegin];
  [self post:UITextFieldTextDidBeginEditingNotification];
}

- (void)qvdevice_didResignFirstResponder {
  [super qvdevice_didResignFirstResponder];
  if ([_delegate respondsToSelector:@selector(textFieldDidEndEditing:)]) [_delegate textFieldDidEndEditing:self];
  [self sendActionsForControlEvents:UIControlEventEditingDidEnd];
  [self post:UITextFieldTextDidEndEditingNotification];
}

- (void)endTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event {
  [super endTrackingWithTouch:touch withEvent:event];
  if ([self isTouchInside]) [self becomeFirstResponder];
}

- (BOOL)mayReplace:(NSRange)range with:(NSString *)string {
  return ![_delegate respondsToSelector:@selector(textField:shouldChangeCharactersInRange:replacementString:)] ||
         [_delegate textField:self shouldChangeCharactersInRange:range replacementString:string];
}

- (void)replace:(NSRange)range with:(NSString *)string {
  if (![self mayReplace:range with:string]) return;
  // The delegate may have set another text while it was asked.
  if (NSMaxRange(range) > [_text length]) return;
  [self setText:[_text stringByReplacingCharactersInRange:range withString:string]];
  [self sendActionsForControlEvents:UIControlEventEditingChanged];
  [self post:UITextFieldTextDidChangeNotification];
}

- (BOOL)hasText {
  return [_text length] > 0;
}

- (void)insertText:(NSString *)text {
  // A line has no line breaks: that key says that the line is complete.
  if ([text isEqualToString:@"\n"]) {
    if ([_delegate respondsToSelector:@selector(textFieldShouldReturn:)] && ![_delegate textFieldShouldReturn:self])
      return;
    [self sendActionsForControlEvents:UIControlEventEditingDidEndOnExit];
    return;
  }
  [self replace:_selection.length ? _selection : NSMakeRange([_text length], 0) with:text];
}

- (void)deleteBackward {
  if (![self hasText]) return;
  [self replace:_selection.length ? _selection : [_text rangeOfComposedCharacterSequenceAtIndex:[_text length] - 1]
           with:@""];
}

@end

@implementation UITextField (QVDeviceSelection)

- (NSRange)qvdevice_selection {
  return _selection;
}

@end

@implementation UIView (UITextField)

- (BOOL)endEditing:(BOOL)force {
  UIResponder *const first = [UIResponder qvdevice_firstResponder];
  UIResponder *each = first;
  while (each && each != self)
    each = [each nextResponder];
  if (!each) return NO;
  if ([first resignFirstResponder]) return YES;
  if (!force) return NO;
  [first qvdevice_loseFirstResponder];
  return YES;
}

@end
