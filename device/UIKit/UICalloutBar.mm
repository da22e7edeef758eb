#import "UICalloutBar.h"

#import "FirstResponder.h"

#import <UIKit/UIMenuController.h>

@implementation UICalloutBar

+ (UICalloutBar *)sharedCalloutBar {
  static UICalloutBar *const bar = [[UICalloutBar alloc] initWithFrame:CGRectZero];
  return bar;
}

- (void)dealloc {
  [_entries release];
  [super dealloc];
}

@synthesize entries = _entries;

- (id)targetForAction:(SEL)action {
  return [[UIResponder qvdevice_firstResponder] targetForAction:action withSender:self];
}

- (void)update {
  NSMutableArray *const possible = [NSMutableArray array];
  const auto add = [possible](NSString *title, SEL action) {
    [possible addObject:[[[UIMenuItem alloc] initWithTitle:title action:action] autorelease]];
  };
  add(@"Cut", @selector(cut:));
  add(@"Copy", @selector(copy:));
  add(@"Paste", @selector(paste:));
  add(@"Select", @selector(select:));
  add(@"Select All", @selector(selectAll:));
  [possible addObjectsFromArray:[[UIMenuController sharedMenuController] menuItems]];
  NSMutableArray *const entries = [NSMutableArray array];
  for (UIMenuItem *item in possible)
    if ([item action] && [self targetForAction:[item action]]) [entries addObject:item];
  [_entries autorelease];
  _entries = [entries copy];
}

@end
