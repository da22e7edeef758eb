// An app with a form: two fields to type or dictate into, and a button that sends them off.
#import <UIKit/UIKit.h>

#import "Say.h"

@interface FormViewController : UIViewController <UITextFieldDelegate> {
  UITextField *_to;
  UITextField *_message;
}
@end

@implementation FormViewController

- (void)dealloc {
  [_to release];
  [_message release];
  [super dealloc];
}

- (UITextField *)fieldWithPlaceholder:(NSString *)placeholder top:(CGFloat)top {
  UITextField *field = [[[UITextField alloc] initWithFrame:CGRectMake(20, top, 280, 40)] autorelease];
  field.placeholder = placeholder;
  field.delegate = self;
  [field addTarget:self action:@selector(changed:) forControlEvents:UIControlEventEditingChanged];
  [self.view addSubview:field];
  return field;
}

- (void)viewDidLoad {
  [super viewDidLoad];
  _to = [[self fieldWithPlaceholder:@"to" top:40] retain];
  _message = [[self fieldWithPlaceholder:@"message" top:100] retain];
  UIButton *send = [UIButton buttonWithType:UIButtonTypeSystem];
  send.frame = CGRectMake(20, 160, 280, 40);
  [send setTitle:@"Send" forState:UIControlStateNormal];
  [send addTarget:self action:@selector(send:) forControlEvents:UIControlEventTouchUpInside];
  [self.view addSubview:send];
}

- (void)viewDidAppear:(BOOL)animated {
  [super viewDidAppear:animated];
  [_to becomeFirstResponder];
}

- (void)textFieldDidBeginEditing:(UITextField *)field {
  Say(@"editing %@", field.placeholder);
}

- (void)textFieldDidEndEditing:(UITextField *)field {
  Say(@"no longer editing %@", field.placeholder);
}

- (void)changed:(UITextField *)field {
  Say(@"%@ is \"%@\"", field.placeholder, field.text);
}

/// Sent to the first responder's chain by whoever wants the next field.
- (void)nextField:(id)sender {
  UITextField *next = [_to isFirstResponder] ? _message : _to;
  [next becomeFirstResponder];
}

- (void)send:(UIButton *)button {
  Say(@"sending \"%@\" to \"%@\"", _message.text ? _message.text : @"", _to.text ? _to.text : @"");
  [self.view endEditing:NO];
}

@end

@interface FormDelegate : NSObject <UIApplicationDelegate> {
  UIWindow *_window;
}
@property (nonatomic, retain) UIWindow *window;
@end

@implementation FormDelegate

@synthesize window = _window;

- (void)dealloc {
  [_window release];
  [super dealloc];
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  self.window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
  self.window.rootViewController = [[[FormViewController alloc] init] autorelease];
  [self.window makeKeyAndVisible];
  return YES;
}

@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    return UIApplicationMain(argc, argv, nil, @"FormDelegate");
  }
}
