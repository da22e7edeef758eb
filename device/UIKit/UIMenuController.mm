#import <UIKit/UIMenuController.h>

#import "UICalloutBar.h"

#import <QVDevice/QVDevice.h>

@implementation UIMenuItem

- (instancetype)initWithTitle:(NSString *)title action:(SEL)action {
  if ((self = [super init])) {
    _title = [title copy];
    _action = action;
  }
  return self;
}

- (void)dealloc {
  [_title release];
  [super dealloc];
}

@synthesize title = _title;
@synthesize action = _action;

@end

@implementation UIMenuController

+ (UIMenuController *)sharedMenuController {
  static UIMenuController *const shared = [[UIMenuController alloc] init];
  return shared;
}

- (void)dealloc {
  [_menuItems release];
  [super dealloc];
}

@synthesize menuItems = _menuItems;

- (BOOL)isMenuVisible {
  return [[UICalloutBar sharedCalloutBar] entries] != nil && ![[UICalloutBar sharedCalloutBar] isHidden];
}

- (void)setMenuVisible:(BOOL)visible {
  [self setMenuVisible:visible animated:NO];
}

- (void)setMenuVisible:(BOOL)visible animated:(BOOL)animated {
  (void)animated;
  UICalloutBar *const bar = [UICalloutBar sharedCalloutBar];
  if (visible) [bar update];
  // A bar without a button is not shown.
  const BOOL shows = visible && [[bar entries] count] > 0;
  const BOOL showed = [self isMenuVisible];
  [bar setHidden:!shows];
  if (shows)
    QVDeviceTrace(@{@"kind" : @"menu", @"event" : @"shown", @"offered" : [[bar entries] valueForKey:@"title"]});
  else if (showed)
    QVDeviceTrace(@{@"kind" : @"menu", @"event" : @"hidden"});
}

- (void)setTargetRect:(CGRect)rect inView:(UIView *)view {
  (void)rect;
  (void)view;
}

- (void)update {
  [[UICalloutBar sharedCalloutBar] update];
}

@end
