#import <UIKit/UIPasteboard.h>

NSNotificationName const UIPasteboardChangedNotification = @"UIPasteboardChangedNotification";

@implementation UIPasteboard

+ (UIPasteboard *)generalPasteboard {
  static UIPasteboard *const general = [[UIPasteboard alloc] init];
  return general;
}

- (instancetype)init {
  if ((self = [super init])) _items = [[NSArray alloc] init];
  return self;
}

- (void)dealloc {
  [_items release];
  [super dealloc];
}

- (NSArray *)items {
  return _items;
}

- (void)setItems:(NSArray *)items {
  NSArray *const before = _items;
  _items = items ? [items copy] : [[NSArray alloc] init];
  [before release];
  [[NSNotificationCenter defaultCenter] postNotificationName:UIPasteboardChangedNotification object:self];
}

@end
