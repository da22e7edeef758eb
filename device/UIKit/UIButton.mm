#import <UIKit/UIButton.h>

#import <UIKit/UILabel.h>

@implementation UIButton

+ (instancetype)buttonWithType:(UIButtonType)type {
  UIButton *const button = [[[self alloc] initWithFrame:CGRectZero] autorelease];
  button->_buttonType = type;
  return button;
}

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    _titles = [[NSMutableDictionary alloc] init];
    _titleColors = [[NSMutableDictionary alloc] init];
    _titleLabel = [[UILabel alloc] initWithFrame:[self bounds]];
    [self addSubview:_titleLabel];
  }
  return self;
}

- (void)dealloc {
  [_titleLabel release];
  [_titles release];
  [_titleColors release];
  [super dealloc];
}

@synthesize titleLabel = _titleLabel;
@synthesize buttonType = _buttonType;

- (void)layoutSubviews {
  [super layoutSubviews];
  [_titleLabel setFrame:[self bounds]];
}

- (void)showTitle {
  [_titleLabel setText:[self currentTitle]];
}

- (void)setTitle:(NSString *)title forState:(UIControlState)state {
  NSNumber *const key = [NSNumber numberWithUnsignedInteger:state];
  if (title)
    [_titles setObject:[[title copy] autorelease] forKey:key];
  else
    [_titles removeObjectForKey:key];
  [self showTitle];
}

- (NSString *)titleForState:(UIControlState)state {
  NSString *const title = [_titles objectForKey:[NSNumber numberWithUnsignedInteger:state]];
  return title ? title : [_titles objectForKey:[NSNumber numberWithUnsignedInteger:UIControlStateNormal]];
}

- (void)setTitleColor:(UIColor *)color forState:(UIControlState)state {
  NSNumber *const key = [NSNumber numberWithUnsignedInteger:state];
  if (color)
    [_titleColors setObject:color forKey:key];
  else
    [_titleColors removeObjectForKey:key];
}

- (UIColor *)titleColorForState:(UIControlState)state {
  UIColor *const color = [_titleColors objectForKey:[NSNumber numberWithUnsignedInteger:state]];
  return color ? color : [_titleColors objectForKey:[NSNumber numberWithUnsignedInteger:UIControlStateNormal]];
}

- (NSString *)currentTitle {
  return [self titleForState:[self state]];
}

- (void)setEnabled:(BOOL)enabled {
  [super setEnabled:enabled];
  [self showTitle];
}

- (void)setHighlighted:(BOOL)highlighted {
  [super setHighlighted:highlighted];
  [self showTitle];
}

- (void)setSelected:(BOOL)selected {
  [super setSelected:selected];
  [self showTitle];
}

@end
