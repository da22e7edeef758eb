#import <UIKit/UILabel.h>

@implementation UILabel

- (instancetype)initWithFrame:(CGRect)frame {
  if ((self = [super initWithFrame:frame])) [self setUserInteractionEnabled:NO];
  return self;
}

- (void)dealloc {
  [_text release];
  [super dealloc];
}

@synthesize text = _text;

@end
