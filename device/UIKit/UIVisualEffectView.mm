#import "BlurStyle.h"

@implementation UIVisualEffect

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return [self retain];
}

@end

@implementation UIBlurEffect

+ (UIBlurEffect *)effectWithStyle:(UIBlurEffectStyle)style {
  UIBlurEffect *const effect = [[[self alloc] init] autorelease];
  effect->_style = style;
  return effect;
}

- (BOOL)isEqual:(id)other {
  return [other isKindOfClass:[UIBlurEffect class]] && static_cast<UIBlurEffect *>(other)->_style == _style;
}

- (NSUInteger)hash {
  return static_cast<NSUInteger>(_style);
}

- (NSString *)description {
  static NSString *const names[] = {@"UIBlurEffectStyleExtraLight", @"UIBlurEffectStyleLight",
                                    @"UIBlurEffectStyleDark"};
  const auto style = static_cast<NSUInteger>(_style);
  NSString *const name =
      style < sizeof names / sizeof *names ? names[style] : [NSString stringWithFormat:@"%ld", (long)_style];
  return [NSString stringWithFormat:@"<UIBlurEffect: %p> style=%@", self, name];
}

@end

@implementation UIBlurEffect (QVDeviceBlurStyle)

- (UIBlurEffectStyle)qvdevice_style {
  return _style;
}

@end

@implementation UIVisualEffectView

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    _contentView = [[UIView alloc] initWithFrame:[self bounds]];
    [_contentView setAutoresizingMask:UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight];
    [self addSubview:_contentView];
  }
  return self;
}

- (instancetype)initWithEffect:(UIVisualEffect *)effect {
  if ((self = [self initWithFrame:CGRectZero])) _effect = [effect copy];
  return self;
}

- (void)dealloc {
  [_effect release];
  [_contentView release];
  [super dealloc];
}

@synthesize effect = _effect;
@synthesize contentView = _contentView;

@end
