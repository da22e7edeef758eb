#import "Commands.h"

#import "CommandArguments.h"
#import "FirstResponder.h"
#import "IncomingURL.h"
#import "InputModes.h"
#import "Lifecycle.h"
#import "TouchEvents.h"
#import "Usable.h"

#import <QVDevice/QVDevice.h>

namespace {

void deliver(UIApplication *application, UITouch *touch, UITouchPhase phase) {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  [touch qvdevice_setPhase:phase];
  [application sendEvent:[UIEvent qvdevice_eventWithTouch:touch]];
  [pool release];
}

// What the user does next takes the edit menu away, unless it is choosing from it.
void putEditMenuAway() {
  if ([[UIMenuController sharedMenuController] isMenuVisible])
    [[UIMenuController sharedMenuController] setMenuVisible:NO animated:YES];
}

void touchAt(UIApplication *application, CGPoint point) {
  putEditMenuAway();
  UITouch *const touch = [UITouch qvdevice_touchAtPoint:point];
  id const view = [touch view] ? NSStringFromClass([[touch view] class]) : (id)[NSNull null];
  QVDeviceTrace(@{
    @"kind" : @"input",
    @"event" : @"touch",
    @"x" : [NSNumber numberWithDouble:point.x],
    @"y" : [NSNumber numberWithDouble:point.y],
    @"view" : view
  });
  deliver(application, touch, UITouchPhaseBegan);
  deliver(application, touch, UITouchPhaseEnded);
}

NSString *touch(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"x", @"y" ])) return problem;
  if (NSString *const problem = QVDeviceNotUsable(application)) return problem;
  const CGRect screen = [[UIScreen mainScreen] bounds];
  CGPoint point = CGPointMake(CGRectGetMidX(screen), CGRectGetMidY(screen));
  id const x = QVDeviceOptionalArgument(command, @"x"), y = QVDeviceOptionalArgument(command, @"y");
  if ((x == nil) != (y == nil)) return @"\"x\" and \"y\" go together";
  if (x) {
    if (![x isKindOfClass:[NSNumber class]] || ![y isKindOfClass:[NSNumber class]])
      return @"\"x\" and \"y\" must be numbers";
    point = CGPointMake([x doubleValue], [y doubleValue]);
    if (point.x < 0 || point.y < 0 || point.x >= screen.size.width || point.y >= screen.size.height)
      return [NSString stringWithFormat:@"(%g, %g) is not on the screen, which is %g x %g", point.x, point.y,
                                        screen.size.width, screen.size.height];
  }
  touchAt(application, point);
  return nil;
}

void collectButtons(UIView *view, NSMutableArray *buttons) {
  if ([view isHidden] || [view alpha] == 0) return;
  if ([view isKindOfClass:[UIButton class]]) [buttons addObject:view];
  for (UIView *subview in [view subviews])
    collectButtons(subview, buttons);
}

NSArray *shownButtons(UIApplication *application) {
  NSMutableArray *const buttons = [NSMutableArray array];
  for (UIWindow *window in [application windows])
    collectButtons(window, buttons);
  return buttons;
}

NSString *noButton(NSString *title, NSArray *buttons) {
  NSMutableArray *const titles = [NSMutableArray array];
  for (UIButton *button in buttons)
    if ([button currentTitle]) [titles addObject:[NSString stringWithFormat:@"\"%@\"", [button currentTitle]]];
  return [NSString stringWithFormat:@"no button that is shown has the title \"%@\"; the titles are %@", title,
                                    [titles count] ? [titles componentsJoinedByString:@", "] : @"none"];
}

NSString *tap(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"title" ])) return problem;
  NSString *problem = nil;
  NSString *const title = QVDeviceTextArgument(command, @"title", &problem);
  if (!title) return problem;
  if ((problem = QVDeviceNotUsable(application))) return problem;
  NSArray *const buttons = shownButtons(application);
  NSMutableArray *const meant = [NSMutableArray array];
  for (UIButton *button in buttons)
    if ([[button currentTitle] isEqualToString:title]) [meant addObject:button];
  if ([meant count] == 0) return noButton(title, buttons);
  if ([meant count] > 1)
    return [NSString
        stringWithFormat:@"%lu buttons that are shown have the title \"%@\"", (unsigned long)[meant count], title];
  UIButton *const button = [meant objectAtIndex:0];
  if (![button isEnabled]) return [NSString stringWithFormat:@"the button \"%@\" is disabled", title];
  const CGRect bounds = [button bounds];
  CGPoint point = [button convertPoint:CGPointMake(CGRectGetMidX(bounds), CGRectGetMidY(bounds)) toView:nil];
  point.x += [[button window] frame].origin.x;
  point.y += [[button window] frame].origin.y;
  UIView *const hit = [[UITouch qvdevice_touchAtPoint:point] view];
  if (![hit isDescendantOfView:button])
    return [NSString stringWithFormat:@"a touch on the button \"%@\" would not reach it", title];
  touchAt(application, point);
  return nil;
}

NSString *perform(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"action" ])) return problem;
  NSString *problem = nil;
  NSString *const action = QVDeviceTextArgument(command, @"action", &problem);
  if (!action) return problem;
  if ((problem = QVDeviceNotUsable(application))) return problem;
  if (![application sendAction:NSSelectorFromString(action) to:nil from:nil forEvent:nil])
    return [NSString stringWithFormat:@"nobody answers \"%@\"", action];
  QVDeviceTrace(@{@"kind" : @"input", @"event" : @"perform", @"action" : action});
  return nil;
}

// Whoever is written into; nil, with the reason, when that is nobody.
UIResponder<UIKeyInput> *writer(NSString **problem) {
  UIResponder *const first = [UIResponder qvdevice_firstResponder];
  if (!first || ([first isKindOfClass:[UIView class]] && [[(UIView *)first window] isHidden])) {
    *problem = @"nothing is being edited: there is no first responder";
    return nil;
  }
  if (![first respondsToSelector:@selector(insertText:)]) {
    *problem = [NSString stringWithFormat:@"the first responder (%@) takes no text", NSStringFromClass([first class])];
    return nil;
  }
  return (UIResponder<UIKeyInput> *)first;
}

NSString *type(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"text" ])) return problem;
  NSString *problem = nil;
  NSString *const text = QVDeviceTextArgument(command, @"text", &problem);
  if (!text) return problem;
  if ((problem = QVDeviceNotUsable(application))) return problem;
  if (!writer(&problem)) return problem;
  QVDeviceTrace(@{@"kind" : @"input", @"event" : @"type", @"text" : text});
  putEditMenuAway();
  // Key by key, as a keyboard does: each may change who is written into.
  for (NSUInteger next = 0; next < [text length];) {
    UIResponder<UIKeyInput> *const responder = writer(&problem);
    if (!responder) return [NSString stringWithFormat:@"after %lu characters %@", (unsigned long)next, problem];
    const NSRange key = [text rangeOfComposedCharacterSequenceAtIndex:next];
    [responder insertText:[text substringWithRange:key]];
    next = NSMaxRange(key);
  }
  return nil;
}

NSString *dictate(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"text" ])) return problem;
  NSString *problem = nil;
  NSString *const text = QVDeviceTextArgument(command, @"text", &problem);
  if (!text) return problem;
  if ((problem = QVDeviceNotUsable(application))) return problem;
  UIResponder<UIKeyInput> *const responder = [[writer(&problem) retain] autorelease];
  if (!responder) return problem;
  [UITextInputMode qvdevice_setDictating:YES];
  if (![responder isFirstResponder]) {
    QVDeviceTrace(@{@"kind" : @"input", @"event" : @"dictationDismissed"});
    [UITextInputMode qvdevice_setDictating:NO];
    return @"dictation was dismissed";
  }
  [responder insertText:text];
  QVDeviceTrace(@{@"kind" : @"input", @"event" : @"dictated", @"text" : text});
  return nil;
}

UITextField *fieldIn(UIView *view) {
  if ([view isHidden] || [view alpha] == 0) return nil;
  if ([view isKindOfClass:[UITextField class]] && [(UITextField *)view isEnabled]) return (UITextField *)view;
  for (UIView *subview in [view subviews])
    if (UITextField *const field = fieldIn(subview)) return field;
  return nil;
}

NSString *showKeyboard(UIApplication *application) {
  NSString *problem = nil;
  if (writer(&problem)) return nil;
  UITextField *field = nil;
  for (UIWindow *window in [[application windows] reverseObjectEnumerator])
    if ((field = fieldIn(window))) break;
  if (!field) return @"there is no text field on the screen";
  return [field becomeFirstResponder] ? nil : @"the text field will not be edited";
}

NSString *hideKeyboard() {
  NSString *problem = nil;
  UIResponder *const responder = writer(&problem);
  if (!responder) return problem;
  return [responder resignFirstResponder] ? nil : @"the first responder insists on being edited";
}

// What a user finds on the screen: "buttons" in the order of the windows, "field" when there is something to write in,
// "editing" when somebody is written into, "unusable" with the reason when nothing can be done to the app.
NSString *controls(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[])) return problem;
  NSMutableArray *const buttons = [NSMutableArray array];
  for (UIButton *button in shownButtons(application)) {
    if (![[button currentTitle] length]) continue;
    [buttons addObject:@{@"title" : [button currentTitle], @"enabled" : [NSNumber numberWithBool:[button isEnabled]]}];
  }
  BOOL field = NO;
  for (UIWindow *window in [application windows])
    field = field || fieldIn(window) != nil;
  NSString *const unusable = QVDeviceNotUsable(application);
  NSString *problem = nil;
  QVDeviceAnswer(@{
    @"buttons" : buttons,
    @"field" : [NSNumber numberWithBool:field],
    @"editing" : [NSNumber numberWithBool:writer(&problem) != nil],
    @"unusable" : unusable ? unusable : (id)[NSNull null]
  });
  return nil;
}

// Without "wish": from dictation back to the keys.
NSString *keyboard(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"wish" ])) return problem;
  if (NSString *const problem = QVDeviceNotUsable(application)) return problem;
  id const wish = QVDeviceOptionalArgument(command, @"wish");
  if ([wish isEqual:@"show"]) return showKeyboard(application);
  if ([wish isEqual:@"hide"]) return hideKeyboard();
  if (wish) return @"\"wish\" must be \"show\" or \"hide\"";
  [UITextInputMode qvdevice_setDictating:NO];
  return nil;
}

NSString *openURL(UIApplication *application, NSDictionary *command) {
  if (NSString *const problem = QVDeviceUnexpectedArgument(command, @[ @"url", @"sourceApplication", @"annotation" ]))
    return problem;
  NSString *problem = nil;
  NSString *const text = QVDeviceTextArgument(command, @"url", &problem);
  if (!text) return problem;
  NSURL *const url = QVDeviceURLFrom(text, &problem);
  if (!url) return problem;
  NSString *const source = QVDeviceOptionalArgument(command, @"sourceApplication");
  if (source && !QVDeviceTextArgument(command, @"sourceApplication", &problem)) return problem;
  id const annotation = QVDeviceOptionalArgument(command, @"annotation");
  [application qvdevice_bringToFrontForURL:[QVDeviceIncomingURL incomingURL:url sourceApplication:source
                                                                 annotation:annotation]];
  return nil;
}

} // namespace

void QVDeviceTakeInputCommands(UIApplication *application) {
  using Command = NSString *(*)(UIApplication *, NSDictionary *);
  const struct {
    NSString *verb;
    Command command;
  } commands[] = {
      {@"touch", touch},     {@"tap", tap},           {@"perform", perform}, {@"type", type},
      {@"dictate", dictate}, {@"keyboard", keyboard}, {@"openURL", openURL}, {@"controls", controls},
  };
  for (const auto &each : commands) {
    const Command command = each.command;
    QVDeviceSetControlHandler(each.verb, ^NSString *(NSDictionary *arguments) {
      return command(application, arguments);
    });
  }
}
