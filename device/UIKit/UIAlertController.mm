#import <UIKit/UIKit.h>

#import "AlertBox.h"

namespace {

const CGFloat width = 270;

} // namespace

@interface UIAlertAction (Handling)
- (void)handle;
@end

@implementation UIAlertAction

+ (instancetype)actionWithTitle:(NSString *)title
                          style:(UIAlertActionStyle)style
                        handler:(void (^)(UIAlertAction *action))handler {
  UIAlertAction *const action = [[[self alloc] init] autorelease];
  action->_title = [title copy];
  action->_style = style;
  action->_handler = [handler copy];
  return action;
}

- (void)dealloc {
  [_title release];
  [_handler release];
  [super dealloc];
}

@synthesize title = _title;
@synthesize style = _style;

- (BOOL)isEnabled {
  return !_disabled;
}

- (void)setEnabled:(BOOL)enabled {
  _disabled = !enabled;
}

- (id)copyWithZone:(NSZone *)zone {
  UIAlertAction *const copy = [[[self class] allocWithZone:zone] init];
  copy->_title = [_title copy];
  copy->_style = _style;
  copy->_disabled = _disabled;
  copy->_handler = [_handler copy];
  return copy;
}

- (void)handle {
  if (_handler) _handler(self);
}

@end

@implementation UIAlertController

+ (instancetype)alertControllerWithTitle:(NSString *)title
                                 message:(NSString *)message
                          preferredStyle:(UIAlertControllerStyle)preferredStyle {
  UIAlertController *const alert = [[[self alloc] init] autorelease];
  [alert setTitle:title];
  [alert setMessage:message];
  alert->_preferredStyle = preferredStyle;
  if (preferredStyle == UIAlertControllerStyleActionSheet) [alert setModalPresentationStyle:UIModalPresentationPopover];
  return alert;
}

- (instancetype)initWithNibName:(NSString *)nibName bundle:(NSBundle *)bundle {
  if ((self = [super initWithNibName:nibName bundle:bundle])) {
    _actions = [[NSMutableArray alloc] init];
    [self setModalPresentationStyle:UIModalPresentationCustom];
  }
  return self;
}

- (void)dealloc {
  [_message release];
  [_actions release];
  [super dealloc];
}

@synthesize message = _message;
@synthesize preferredStyle = _preferredStyle;

- (NSArray *)actions {
  return [[_actions copy] autorelease];
}

- (void)addAction:(UIAlertAction *)action {
  if ([action style] == UIAlertActionStyleCancel)
    for (UIAlertAction *each in _actions)
      if ([each style] == UIAlertActionStyleCancel)
        [NSException raise:NSInternalInconsistencyException
                    format:@"UIAlertController can only have one action with a style of UIAlertActionStyleCancel"];
  [_actions addObject:action];
}

- (void)viewDidLoad {
  [super viewDidLoad];
  UIView *const view = [self view];
  [view setBackgroundColor:[UIColor colorWithWhite:0 alpha:0.24]];
  UIView *const box = [[[QVDeviceAlertBox alloc] initWithTitle:[self title] message:_message actions:_actions
                                                         width:width
                                                        target:self
                                                        action:@selector(qvdevice_choose:)] autorelease];
  [box setCenter:[view center]];
  [box setAutoresizingMask:UIViewAutoresizingFlexibleLeftMargin | UIViewAutoresizingFlexibleRightMargin |
                           UIViewAutoresizingFlexibleTopMargin | UIViewAutoresizingFlexibleBottomMargin];
  [view addSubview:box];
}

- (void)qvdevice_choose:(UIButton *)button {
  UIAlertAction *const action = [_actions objectAtIndex:static_cast<NSUInteger>([button tag])];
  [[self presentingViewController] dismissViewControllerAnimated:YES completion:^{
    [action handle];
  }];
}

@end
