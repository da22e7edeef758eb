#import "PasscodeViewController.h"

#import "PasscodeRequest.h"
#import "Say.h"

#include <stdlib.h>
#include <unistd.h>

static NSString *const kPasscode = @"2580";
static NSString *const kErrorDomain = @"com.example.manager.passcode";

@implementation PasscodeViewController

- (void)dealloc {
  [_typed release];
  [super dealloc];
}

- (void)addButton:(NSString *)title action:(SEL)action at:(NSUInteger)place {
  UIButton *button = [UIButton buttonWithType:UIButtonTypeSystem];
  [button setTitle:title forState:UIControlStateNormal];
  [button setFrame:CGRectMake(20 + 95 * (CGFloat)(place % 3), 60 + 60 * (CGFloat)(place / 3), 90, 50)];
  [button addTarget:self action:action forControlEvents:UIControlEventTouchUpInside];
  [[self view] addSubview:button];
}

- (void)viewDidLoad {
  [super viewDidLoad];
  _typed = [[NSMutableString alloc] init];
  NSUInteger place = 0;
  for (NSString *digit in @[ @"1", @"2", @"3", @"4", @"5", @"6", @"7", @"8", @"9" ])
    [self addButton:digit action:@selector(type:) at:place++];
  [self addButton:@"Cancel" action:@selector(cancel) at:place++];
  [self addButton:@"0" action:@selector(type:) at:place++];
  [self addButton:@"OK" action:@selector(confirm) at:place++];
  [self addButton:@"Message" action:@selector(promiseMessage) at:place++];
  [self addButton:@"Crash" action:@selector(crash) at:place++];
  [self addButton:@"Hang" action:@selector(hang) at:place++];
  LoadPasscodeRequest([self extensionContext], ^(NSDictionary *request) {
    Say(@"Passcode is asked for: %@", request ? InWords(request) : @"but not by an app that knows how");
  });
}

- (void)type:(UIButton *)digit {
  [_typed appendString:[digit titleForState:UIControlStateNormal]];
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
