#import "AlertBox.h"

#import <QuartzCore/CALayer.h>
#import <UIKit/UIKit.h>

#include <algorithm>
#include <cmath>

namespace {

const CGFloat rowHeight = 44, margin = 16, titleHeight = 24, lineHeight = 17, hairline = 0.5;
const CGFloat usualCharacter = 6.6; // the width of one in a message, about
const CGFloat mostLines = 12;

// How high a message becomes, about: enough for most.
CGFloat heightOf(NSString *message, CGFloat width) {
  CGFloat lines = 0;
  for (NSString *paragraph in [message componentsSeparatedByString:@"\n"])
    lines += std::max(CGFloat{1}, std::ceil(static_cast<CGFloat>([paragraph length]) * usualCharacter / width));
  return [message length] ? std::min(lines, mostLines) * lineHeight : 0;
}

UIColor *separatorColor() { return [UIColor colorWithWhite:0.24 alpha:0.29]; }

} // namespace

@implementation QVDeviceAlertBox

- (instancetype)initWithTitle:(NSString *)title
                      message:(NSString *)message
                      actions:(NSArray *)actions
                        width:(CGFloat)width
                       target:(id)target
                       action:(SEL)action {
  if (!(self = [self initWithFrame:CGRectZero])) return nil;
  [self setBackgroundColor:[UIColor colorWithWhite:0.97 alpha:1]];
  [[self layer] setCornerRadius:14];
  CGFloat y = margin;
  const CGFloat room = width - 2 * margin;
  if ([title length]) {
    [self addText:title font:[UIFont systemFontOfSize:17 weight:UIFontWeightSemibold]
             rect:CGRectMake(margin, y, room, titleHeight)];
    y += titleHeight;
  }
  const CGFloat height = heightOf(message, room);
  if (height > 0) [self addText:message font:[UIFont systemFontOfSize:13] rect:CGRectMake(margin, y, room, height)];
  y += height + margin;
  const bool isPair = [actions count] == 2;
  for (NSUInteger index = 0; index < [actions count]; ++index) {
    const CGRect rect = isPair ? CGRectMake(static_cast<CGFloat>(index) * width / 2, y, width / 2, rowHeight)
                               : CGRectMake(0, y + rowHeight * static_cast<CGFloat>(index), width, rowHeight);
    UIButton *const button = [self addButton:[actions objectAtIndex:index] rect:rect];
    [button setTag:static_cast<NSInteger>(index)];
    [button addTarget:target action:action forControlEvents:UIControlEventTouchUpInside];
  }
  if (isPair) [self addLine:CGRectMake(width / 2, y, hairline, rowHeight)];
  const CGFloat rows = isPair ? 1 : static_cast<CGFloat>([actions count]);
  [self setFrame:CGRectMake(0, 0, width, y + rows * rowHeight)];
  return self;
}

- (void)addText:(NSString *)text font:(UIFont *)font rect:(CGRect)rect {
  UILabel *const label = [[[UILabel alloc] initWithFrame:rect] autorelease];
  [label setText:text];
  [label setFont:font];
  [label setTextAlignment:NSTextAlignmentCenter];
  [label setNumberOfLines:0];
  [self addSubview:label];
}

- (void)addLine:(CGRect)rect {
  UIView *const line = [[[UIView alloc] initWithFrame:rect] autorelease];
  [line setBackgroundColor:separatorColor()];
  [line setUserInteractionEnabled:NO];
  [self addSubview:line];
}

- (UIButton *)addButton:(UIAlertAction *)action rect:(CGRect)rect {
  UIButton *const button = [UIButton buttonWithType:UIButtonTypeSystem];
  [button setFrame:rect];
  [button setTitle:[action title] forState:UIControlStateNormal];
  [button setEnabled:[action isEnabled]];
  [self addSubview:button];
  [self addLine:CGRectMake(rect.origin.x, rect.origin.y, rect.size.width, hairline)];
  return button;
}

@end
