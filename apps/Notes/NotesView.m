#import "NotesView.h"

#import <QuartzCore/QuartzCore.h>

#import "CardView.h"
#import "Note.h"

static const CGFloat kMargin = 16;
static const CGFloat kBarHeight = 84;
static const CGFloat kHeader = 60;
static const CGFloat kTitle = 41;
// From this width on the list stands beside the open note.
static const CGFloat kWide = 700;
static const CGFloat kListWidth = 300;

@implementation NotesView

@synthesize textField = _textField;

- (id)initWithFrame:(CGRect)frame notes:(NSArray *)notes {
  self = [super initWithFrame:frame];
  if (self) {
    self.backgroundColor = [UIColor colorWithRed:0.949 green:0.949 blue:0.969 alpha:1];
    self.autoresizingMask = UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight;
    _count = [notes count];
    _title = [[UILabel labelWithText:@"Notes" size:34 weight:UIFontWeightBold] retain];
    [self addSubview:_title];
    [self addList:notes];
    [self addPage];
    _status = [[UILabel labelWithText:nil size:13 weight:UIFontWeightRegular] retain];
    _status.textAlignment = NSTextAlignmentCenter;
    [_status stepBack];
    [self addSubview:_status];
    _bar = [[UIView alloc] initWithFrame:CGRectZero];
    _bar.backgroundColor = [UIColor colorWithWhite:0.98 alpha:1];
    [self addSubview:_bar];
  }
  return self;
}

- (void)dealloc {
  [_title release];
  [_list release];
  [_page release];
  [_textField release];
  [_body release];
  [_status release];
  [_bar release];
  [super dealloc];
}

- (void)addList:(NSArray *)notes {
  _list = [[CardView alloc] initWithFrame:CGRectMake(0, 0, kListWidth, [CardView heightOfRows:_count])];
  NSMutableArray *rows = [NSMutableArray array];
  for (Note *note in notes)
    [rows addObject:@[ note.title, [[note.body componentsSeparatedByString:@"\n"] objectAtIndex:0] ]];
  [_list setRows:rows];
  [self addSubview:_list];
}

- (void)addPage {
  _page = [[UIView alloc] initWithFrame:CGRectZero];
  _page.backgroundColor = [UIColor whiteColor];
  _page.layer.cornerRadius = 12;
  _textField = [[UITextField alloc] initWithFrame:CGRectZero];
  _body = [[UILabel labelWithText:nil size:17 weight:UIFontWeightRegular] retain];
  _body.numberOfLines = 0;
  [_page addSubview:_textField];
  [_page addSubview:_body];
  [self addSubview:_page];
}

- (void)setBody:(NSString *)body {
  _body.text = [body stringByTrimmingCharactersInSet:[NSCharacterSet whitespaceAndNewlineCharacterSet]];
  [self setNeedsLayout];
}

- (void)setStatus:(NSString *)status {
  _status.text = status;
}

- (void)addButton:(NSString *)title target:(id)target action:(SEL)action {
  UIButton *button = [UIButton buttonWithType:UIButtonTypeSystem];
  [button setTitle:title forState:UIControlStateNormal];
  [button addTarget:target action:action forControlEvents:UIControlEventTouchUpInside];
  [_bar addSubview:button];
  [self setNeedsLayout];
}

- (void)layoutSubviews {
  [super layoutSubviews];
  CGSize size = self.bounds.size;
  BOOL isWide = size.width >= kWide;
  BOOL isLow = size.height < kWide;
  CGFloat top = isLow ? 16 : kHeader, listHeight = [CardView heightOfRows:_count];
  CGFloat barHeight = isLow ? 64 : kBarHeight;
  _title.frame = CGRectMake(kMargin + 4, top, size.width - 2 * kMargin, kTitle);
  CGFloat y = top + kTitle + 12, bottom = size.height - barHeight - 30;
  _list.frame = CGRectMake(kMargin, y, isWide ? kListWidth : size.width - 2 * kMargin, listHeight);
  CGFloat x = isWide ? kMargin + kListWidth + kMargin : kMargin;
  if (!isWide) y += listHeight + 20;
  _page.frame = CGRectMake(x, y, size.width - x - kMargin, bottom - y);
  _textField.frame = CGRectMake(8, 8, _page.bounds.size.width - 16, 40);
  NSUInteger lines = [[_body.text componentsSeparatedByString:@"\n"] count];
  _body.frame = CGRectMake(18, 58, _page.bounds.size.width - 36, 21 * (CGFloat)lines);
  _status.frame = CGRectMake(kMargin, bottom + 5, size.width - 2 * kMargin, 20);
  _bar.frame = CGRectMake(0, size.height - barHeight, size.width, barHeight);
  CGFloat width = size.width / (CGFloat)[_bar.subviews count];
  CGFloat left = 0;
  for (UIButton *button in _bar.subviews) {
    button.frame = CGRectMake(left, 4, width, 44);
    left += width;
  }
}

@end
