#import "CardView.h"

#import <QuartzCore/QuartzCore.h>

static const CGFloat kRow = 60;
static const CGFloat kMargin = 16;

@implementation UILabel (Sample)

+ (UILabel *)labelWithText:(NSString *)text size:(CGFloat)size weight:(UIFontWeight)weight {
  UILabel *label = [[[UILabel alloc] initWithFrame:CGRectZero] autorelease];
  label.text = text;
  label.font = [UIFont systemFontOfSize:size weight:weight];
  return label;
}

- (void)stepBack {
  self.textColor = [UIColor colorWithWhite:0.24 alpha:0.6];
}

@end

@implementation CardView

- (id)initWithFrame:(CGRect)frame {
  self = [super initWithFrame:frame];
  if (self) {
    self.backgroundColor = [UIColor whiteColor];
    self.layer.cornerRadius = 12;
  }
  return self;
}

+ (CGFloat)heightOfRows:(NSUInteger)count {
  return kRow * (CGFloat)count;
}

- (void)setRows:(NSArray *)rows {
  for (UIView *view in self.subviews)
    [view removeFromSuperview];
  CGFloat y = 0;
  for (NSArray *row in rows) {
    if (y > 0) [self addLineAt:y];
    NSString *detail = [row count] > 1 ? [row objectAtIndex:1] : nil;
    [self addText:[row objectAtIndex:0] detail:detail at:y];
    y += kRow;
  }
}

- (void)addLineAt:(CGFloat)y {
  UIView *line =
      [[[UIView alloc] initWithFrame:CGRectMake(kMargin, y, self.bounds.size.width - kMargin, 0.5)] autorelease];
  line.backgroundColor = [UIColor colorWithWhite:0.24 alpha:0.29];
  line.autoresizingMask = UIViewAutoresizingFlexibleWidth;
  [self addSubview:line];
}

- (void)addText:(NSString *)text detail:(NSString *)detail at:(CGFloat)y {
  CGFloat width = self.bounds.size.width - 2 * kMargin;
  UILabel *title = [UILabel labelWithText:text size:17 weight:UIFontWeightMedium];
  title.frame = CGRectMake(kMargin, y + (detail ? 9 : 18), width, 24);
  title.autoresizingMask = UIViewAutoresizingFlexibleWidth;
  [self addSubview:title];
  if (!detail) return;
  UILabel *below = [UILabel labelWithText:detail size:14 weight:UIFontWeightRegular];
  [below stepBack];
  below.frame = CGRectMake(kMargin, y + 32, width, 19);
  below.autoresizingMask = UIViewAutoresizingFlexibleWidth;
  [self addSubview:below];
}

@end
