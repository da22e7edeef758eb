// What the edit menu does with a text field.
#import <UIKit/UIKit.h>

@implementation UITextField (QVDeviceEditing)

- (NSString *)selectedText {
  return [[self text] substringWithRange:_selection];
}

// Nothing of a secret leaves the field.
- (BOOL)canPerformAction:(SEL)action withSender:(id)sender {
  const BOOL hasSelection = _selection.length > 0;
  if (sel_isEqual(action, @selector(copy:)) || sel_isEqual(action, @selector(cut:)))
    return hasSelection && ![self isSecureTextEntry];
  if (sel_isEqual(action, @selector(paste:)))
    return [self isFirstResponder] && [[[UIPasteboard generalPasteboard] string] length] > 0;
  if (sel_isEqual(action, @selector(select:))) return [self hasText] && !hasSelection;
  if (sel_isEqual(action, @selector(selectAll:))) return _selection.length < [[self text] length];
  return [super canPerformAction:action withSender:sender];
}

- (void)copy:(id)sender {
  if ([self canPerformAction:@selector(copy:) withSender:sender])
    [[UIPasteboard generalPasteboard] setString:[self selectedText]];
}

- (void)cut:(id)sender {
  if (![self canPerformAction:@selector(cut:) withSender:sender]) return;
  [[UIPasteboard generalPasteboard] setString:[self selectedText]];
  [self deleteBackward];
}

- (void)paste:(id)sender {
  (void)sender;
  NSString *const text = [[UIPasteboard generalPasteboard] string];
  if ([text length]) [self insertText:text];
}

// The last word: where the user touched is not known.
- (void)select:(id)sender {
  (void)sender;
  NSCharacterSet *const blanks = [NSCharacterSet whitespaceAndNewlineCharacterSet];
  NSUInteger end = [[self text] length];
  while (end > 0 && [blanks characterIsMember:[[self text] characterAtIndex:end - 1]])
    --end;
  NSUInteger start = end;
  while (start > 0 && ![blanks characterIsMember:[[self text] characterAtIndex:start - 1]])
    --start;
  _selection = NSMakeRange(start, end - start);
}

- (void)selectAll:(id)sender {
  (void)sender;
  _selection = NSMakeRange(0, [[self text] length]);
}

@end
