#import <UIKit/UIKit.h>

#import "SystemWindows.h"

#include <cstdarg>

@implementation UIAlertView

- (instancetype)initWithTitle:(NSString *)title
                      message:(NSString *)message
                     delegate:(id<UIAlertViewDelegate>)delegate
            cancelButtonTitle:(NSString *)cancelButtonTitle
            otherButtonTitles:(NSString *)otherButtonTitles, ... {
  if ((self = [self initWithFrame:CGRectZero])) {
    [self setTitle:title];
    [self setMessage:message];
    _delegate = delegate;
    if (cancelButtonTitle) _cancelButtonIndex = [self addButtonWithTitle:cancelButtonTitle];
    va_list titles;
    va_start(titles, otherButtonTitles);
    for (NSString *each = otherButtonTitles; each; each = va_arg(titles, NSString *))
      [self addButtonWithTitle:each];
    va_end(titles);
  }
  return self;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    _buttons = [[NSMutableArray alloc] init];
    _cancelButtonIndex = -1;
  }
  return self;
}

- (void)dealloc {
  [_title release];
  [_message release];
  [_buttons release];
  [super dealloc];
}

@synthesize title = _title;
@synthesize message = _message;
@synthesize delegate = _delegate;
@synthesize cancelButtonIndex = _cancelButtonIndex;

- (NSInteger)numberOfButtons {
  return static_cast<NSInteger>([_buttons count]);
}

- (BOOL)isVisible {
  return _shimWindow != nil;
}

- (NSInteger)addButtonWithTitle:(NSString *)title {
  [_buttons addObject:title];
  return [self numberOfButtons] - 1;
}

- (NSString *)buttonTitleAtIndex:(NSInteger)buttonIndex {
  return [_buttons objectAtIndex:static_cast<NSUInteger>(buttonIndex)];
}

- (void)show {
  if (_shimWindow) return;
  // Until it is dismissed.
  [self retain];
  _alertController = [[UIAlertController alertControllerWithTitle:_title message:_message
                                                   preferredStyle:UIAlertControllerStyleAlert] retain];
  for (NSInteger index = 0; index < [self numberOfButtons]; ++index) {
    const auto style = index == _cancelButtonIndex ? UIAlertActionStyleCancel : UIAlertActionStyleDefault;
    [_alertController addAction:[UIAlertAction actionWithTitle:[_buttons objectAtIndex:static_cast<NSUInteger>(index)]
                                                         style:style handler:^(UIAlertAction *) {
                                                           [self qvdevice_clicked:index];
                                                         }]];
  }
  _shimWindow = [[_UIAlertControllerShimPresenterWindow alloc] init];
  [_shimWindow setRootViewController:[[[UIViewController alloc] init] autorelease]];
  [_shimWindow makeKeyAndVisible];
  [[_shimWindow rootViewController] presentViewController:_alertController animated:YES completion:nil];
}

- (void)qvdevice_clicked:(NSInteger)index {
  if ([_delegate respondsToSelector:@selector(alertView:clickedButtonAtIndex:)])
    [_delegate alertView:self clickedButtonAtIndex:index];
  [self dismissWithClickedButtonIndex:index animated:YES];
}

- (void)dismissWithClickedButtonIndex:(NSInteger)buttonIndex animated:(BOOL)animated {
  if (!_shimWindow) return;
  UIWindow *const window = [_shimWindow autorelease];
  _shimWindow = nil;
  [[window rootViewController] dismissViewControllerAnimated:animated completion:nil];
  [window setHidden:YES];
  // The controller's actions hold on to this view.
  [_alertController autorelease];
  _alertController = nil;
  if ([_delegate respondsToSelector:@selector(alertView:didDismissWithButtonIndex:)])
    [_delegate alertView:self didDismissWithButtonIndex:buttonIndex];
  [self autorelease];
}

@end
