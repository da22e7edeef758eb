#import "PasscodeViewController.h"

#import <QuartzCore/QuartzCore.h>

#import "CardView.h"
#import "PasscodeRequest.h"
#import "Say.h"

#include <stdlib.h>
#include <unistd.h>

static NSString *const kPasscode = @"2580";
static NSString *const kErrorDomain = @"com.example.manager.passcode";
static const UIViewAutoresizing kStaysInTheMiddle =
    UIViewAutoresizingFlexibleLeftMargin | UIViewAutoresizingFlexibleRightMargin | UIViewAutoresizingFlexibleTopMargin |
    UIViewAutoresizingFlexibleBottomMargin;

@implementation PasscodeViewController

- (void)dealloc {
  [_typed release];
  [_dots release];
  [super dealloc];
}

- (UIButton *)addButton:(NSString *)title action:(SEL)action frame:(CGRect)frame {
  UIButton *button = [UIButton buttonWithType:UIButtonTypeSystem];
  [button setTitle:title forState:UIControlStateNormal];
  [button setFrame:frame];
  [button setAutoresizingMask:kStaysInTheMiddle];
  [button addTarget:self action:action forControlEvents:UIControlEventTouchUpInside];
  [[self view] addSubview:button];
  return button;
}

- (UILabel *)addText:(NSString *)text size:(CGFloat)size weight:(UIFontWeight)weight at:(CGFloat)y {
  UILabel *label = [UILabel labelWithText:text size:size weight:weight];
  [label setTextAlignment:NSTextAlignmentCenter];
  [label setFrame:CGRectMake(0, y, [[self view] bounds].size.width, size * 1.4)];
  [label setAutoresizingMask:UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleTopMargin |
                             UIViewAutoresizingFlexibleBottomMargin];
  [[self view] addSubview:label];
  return label;
}

/// Keys in rows of three, in the middle of the screen; digits are round.
- (void)addKeysBelow:(CGFloat)top step:(CGFloat)step {
  NSArray *titles = @[ @"1", @"2", @"3", @"4", @"5", @"6", @"7", @"8", @"9", @"Cancel", @"0", @"OK" ];
  CGFloat size = step - 16, left = CGRectGetMidX([[self view] bounds]) - 1.5 * step + 8;
  NSUInteger place = 0;
  for (NSString *title in titles) {
    BOOL isDigit = [title length] == 1;
    SEL action = isDigit ? @selector(type:) : [title isEqual:@"OK"] ? @selector(confirm) : @selector(cancel);
    UIButton *key =
        [self addButton:title action:action
                  frame:CGRectMake(left + step * (CGFloat)(place % 3), top + step * (CGFloat)(place / 3), size, size)];
    if (isDigit) {
      [key setBackgroundColor:[UIColor colorWithWhite:0.5 alpha:0.18]];
      [key setTitleColor:[UIColor blackColor] forState:UIControlStateNormal];
      [[key layer] setCornerRadius:size / 2];
    }
    ++place;
  }
}

/// What a passcode extension does not do when all is well.
- (void)addTroubleBelow:(CGFloat)top {
  CGFloat width = 110, left = CGRectGetMidX([[self view] bounds]) - 1.5 * width;
  [self addButton:@"Message" action:@selector(promiseMessage) frame:CGRectMake(left, top, width, 44)];
  [self addButton:@"Crash" action:@selector(crash) frame:CGRectMake(left + width, top, width, 44)];
  [self addButton:@"Hang" action:@selector(hang) frame:CGRectMake(left + 2 * width, top, width, 44)];
}

- (void)viewDidLoad {
  [super viewDidLoad];
  _typed = [[NSMutableString alloc] init];
  UIView *view = [self view];
  // Up to release 12 nothing blurs what is behind.
  BOOL isBlurred = [[[UIDevice currentDevice] systemVersion] integerValue] >= 13;
  [view setBackgroundColor:[UIColor colorWithWhite:1 alpha:isBlurred ? 0.2 : 0.95]];
  CGFloat height = [view bounds].size.height;
  CGFloat step = height < 500 ? 60 : 92;
  CGFloat top = height / 2 - 2 * step + (height < 500 ? 20 : 10);
  [self addText:@"Enter Passcode" size:20 weight:UIFontWeightSemibold at:top - (height < 500 ? 52 : 120)];
  _dots = [[self addText:nil size:26 weight:UIFontWeightRegular at:top - (height < 500 ? 30 : 76)] retain];
  [self showDots];
  [self addKeysBelow:top step:step];
  [self addTroubleBelow:height < 500 ? height - 60 : height - 110];
  LoadPasscodeRequest([self extensionContext], ^(NSDictionary *request) {
    Say(@"Passcode is asked for: %@", request ? InWords(request) : @"but not by an app that knows how");
  });
}

- (void)showDots {
  NSMutableString *dots = [NSMutableString string];
  for (NSUInteger place = 0; place < MAX([kPasscode length], [_typed length]); ++place)
    [dots appendString:place < [_typed length] ? @" ●" : @" ○"];
  [_dots setText:dots];
}

- (void)type:(UIButton *)digit {
  [_typed appendString:[digit titleForState:UIControlStateNormal]];
  [self showDots];
}

- (void)promiseMessage {
  _withMessage = YES;
}

- (void)answer:(NSDictionary *)answer {
  NSMutableDictionary *all = [NSMutableDictionary dictionaryWithDictionary:answer];
  if (_withMessage) [all setObject:@"The passcode expires tomorrow" forKey:@"extensionMessage"];
  NSExtensionItem *item = [[[NSExtensionItem alloc] init] autorelease];
  [item setUserInfo:all];
  [[self extensionContext] completeRequestReturningItems:@[ item ] completionHandler:nil];
}

- (void)confirm {
  BOOL right = [_typed isEqualToString:kPasscode];
  [_typed setString:@""];
  [self showDots];
  if (right)
    [self answer:@{@"result" : @"TRUE", @"ak" : @"sample-ak", @"sk" : @"sample-sk"}];
  else
    [self answer:@{@"result" : @"FALSE"}];
}

- (void)cancel {
  [[self extensionContext]
      cancelRequestWithError:[NSError errorWithDomain:kErrorDomain code:1
                                             userInfo:@{NSLocalizedDescriptionKey : @"The user cancelled."}]];
}

- (void)crash {
  abort();
}

// Not before the tap is over: whoever taps is not kept waiting.
- (void)hang {
  [self performSelector:@selector(sleepForEver) withObject:nil afterDelay:0];
}

- (void)sleepForEver {
  for (;;)
    pause();
}

@end
