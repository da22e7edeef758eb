#import "ListView.h"

#import "CardView.h"

static const CGFloat kMargin = 20;

@implementation ListView

+ (ListView *)viewWithTitle:(NSString *)title rows:(NSArray *)rows {
  ListView *view = [[[ListView alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  view.backgroundColor = [UIColor colorWithRed:0.949 green:0.949 blue:0.969 alpha:1];
  view.autoresizingMask = UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;
  UILabel *label = [UILabel labelWithText:title size:34 weight:UIFontWeightBold];
  label.frame = CGRectMake(kMargin, 60, view.bounds.size.width - 2 * kMargin, 41);
  label.autoresizingMask = UIViewAutoresizingFlexibleWidth;
  [view addSubview:label];
  [view setRows:rows];
  return view;
}

- (void)setRows:(NSArray *)rows {
  if ([self.subviews count] > 1) [[self.subviews lastObject] removeFromSuperview];
  CardView *card = [[[CardView alloc] initWithFrame:CGRectMake(kMargin, 116, self.bounds.size.width - 2 * kMargin,
                                                               [CardView heightOfRows:[rows count]])] autorelease];
  card.autoresizingMask = UIViewAutoresizingFlexibleWidth;
  [card setRows:rows];
  [self addSubview:card];
}

@end
