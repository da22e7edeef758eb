#import <UIKit/UILabel.h>

#import <UIKit/UIColor.h>

namespace {

const CGFloat usualSize = 17;

} // namespace

@implementation UILabel

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) {
    [self setUserInteractionEnabled:NO];
    _textAlignment = NSTextAlignmentNatural;
    _numberOfLines = 1;
  }
  return self;
}

- (void)dealloc {
  [_text release];
  [_font release];
  [_textColor release];
  [super dealloc];
}

@synthesize text = _text;
@synthesize font = _font;
@synthesize textColor = _textColor;
@synthesize textAlignment = _textAlignment;
@synthesize numberOfLines = _numberOfLines;

- (UIFont *)font {
  return _font ? _font : [UIFont systemFontOfSize:usualSize];
}

- (UIColor *)textColor {
  return _textColor ? _textColor : [UIColor blackColor];
}

@end
