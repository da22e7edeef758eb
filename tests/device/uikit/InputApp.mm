// A small app that says what its user and other apps do with it. INPUT_DELEGATE names the delegate's class, INPUT_DO
// something to do.

#import <UIKit/UIKit.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

void say(NSString *format, ...) __attribute__((format(__NSString__, 1, 2)));

void say(NSString *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  NSString *const text = [[[NSString alloc] initWithFormat:format arguments:arguments] autorelease];
  va_end(arguments);
  std::printf("%s\n", [text UTF8String]);
  std::fflush(stdout);
}

bool asked(const char *what) {
  const char *const todo = std::getenv("INPUT_DO");
  return todo && std::string(todo).find(what) != std::string::npos;
}

// A dictionary in one line, in the order of its keys.
NSString *inOrder(NSDictionary *dictionary) {
  if (!dictionary) return @"nil";
  NSMutableArray *const entries = [NSMutableArray array];
  for (NSString *key in [[dictionary allKeys] sortedArrayUsingSelector:@selector(compare:)]) {
    id const value = [dictionary objectForKey:key];
    NSString *const text = [value isKindOfClass:[NSURL class]]
                               ? [@"URL " stringByAppendingString:[value absoluteString]]
                               : [value description];
    [entries addObject:[NSString stringWithFormat:@"%@ = %@", key, text]];
  }
  return [entries componentsJoinedByString:@", "];
}

const char *phaseOf(UITouch *touch) { return [touch phase] == UITouchPhaseBegan ? "began" : "ended"; }

} // namespace

// Every event comes by here.
@interface InputApplication : UIApplication
@end

@implementation InputApplication
- (void)sendEvent:(UIEvent *)event {
  UITouch *const touch = [[event allTouches] anyObject];
  say(@"sendEvent: type %ld, %lu touch, %s", (long)[event type], (unsigned long)[[event allTouches] count],
      phaseOf(touch));
  [super sendEvent:event];
}
@end

@interface TouchedView : UIView
@end

@implementation TouchedView
- (void)say:(NSSet *)touches event:(UIEvent *)event {
  UITouch *const touch = [touches anyObject];
  const CGPoint here = [touch locationInView:self], window = [touch locationInView:nil];
  say(@"%s at %g, %g of the view and %g, %g of the window%s", phaseOf(touch), here.x, here.y, window.x, window.y,
      [[event touchesForView:self] isEqualToSet:touches] ? "" : " with other touches");
}
- (void)touchesBegan:(NSSet *)touches withEvent:(UIEvent *)event {
  [self say:touches event:event];
}
- (void)touchesEnded:(NSSet *)touches withEvent:(UIEvent *)event {
  [self say:touches event:event];
  if (asked("remove")) [self removeFromSuperview];
}
@end

@interface InputController : UIViewController <UITextFieldDelegate> {
@public
  UITextField *_field;
}
@end

@implementation InputController

- (UIButton *)addButton:(NSString *)title at:(CGRect)frame {
  UIButton *const button = [UIButton buttonWithType:UIButtonTypeSystem];
  [button setFrame:frame];
  [button setTitle:title forState:UIControlStateNormal];
  [button addTarget:self action:@selector(pressed:event:) forControlEvents:UIControlEventTouchUpInside];
  [[self view] addSubview:button];
  return button;
}

- (void)viewDidLoad {
  [super viewDidLoad];
  [self addButton:@"Press" at:CGRectMake(10, 100, 100, 40)];
  [[self addButton:@"Hidden" at:CGRectMake(10, 150, 100, 40)] setHidden:YES];
  [[self addButton:@"Disabled" at:CGRectMake(10, 200, 100, 40)] setEnabled:NO];
  [self addButton:@"Twin" at:CGRectMake(10, 250, 100, 40)];
  [self addButton:@"Twin" at:CGRectMake(120, 250, 100, 40)];
  [self addButton:@"Covered" at:CGRectMake(10, 300, 100, 40)];
  UIView *const cover = [[[UIView alloc] initWithFrame:CGRectMake(10, 300, 100, 40)] autorelease];
  [[self view] addSubview:cover];
  _field = [[[UITextField alloc] initWithFrame:CGRectMake(10, 400, 100, 40)] autorelease];
  [_field setDelegate:self];
  [_field addTarget:self action:@selector(changed:) forControlEvents:UIControlEventEditingChanged];
  [[self view] addSubview:_field];
  TouchedView *const touched = [[[TouchedView alloc] initWithFrame:CGRectMake(10, 500, 200, 100)] autorelease];
  [[self view] addSubview:touched];
}

- (void)pressed:(UIButton *)button event:(UIEvent *)event {
  say(@"pressed %@, %s", [button currentTitle], phaseOf([[event allTouches] anyObject]));
}

- (void)changed:(UITextField *)field {
  say(@"text \"%@\"", [field text]);
}

- (void)textFieldDidBeginEditing:(UITextField *)field {
  (void)field;
  say(@"editing begins");
}

- (void)textFieldDidEndEditing:(UITextField *)field {
  say(@"editing ends with \"%@\"", [field text]);
}

- (BOOL)textFieldShouldReturn:(UITextField *)field {
  [field resignFirstResponder];
  return YES;
}

- (void)answer:(id)sender {
  say(@"answered, %@ sender", sender ? @"with" : @"without");
}

- (BOOL)canPerformAction:(SEL)action withSender:(id)sender {
  return !sel_isEqual(action, @selector(forbidden:)) && [super canPerformAction:action withSender:sender];
}

- (void)forbidden:(id)sender {
  (void)sender;
  say(@"forbidden");
}

@end

@interface InputDelegate : NSObject <UIApplicationDelegate> {
  UIWindow *_window;
}
@end

@implementation InputDelegate

@synthesize window = _window;

- (BOOL)application:(UIApplication *)application willFinishLaunchingWithOptions:(NSDictionary *)options {
  (void)application;
  say(@"will finish launching: %@", inOrder(options));
  return !asked("refuse early");
}

- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  say(@"did finish launching: %@", inOrder(options));
  say(@"terminateWithSuccess: %s",
      [application respondsToSelector:NSSelectorFromString(@"terminateWithSuccess")] ? "yes" : "no");
  [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(inputModeChanged:)
                                               name:UITextInputCurrentInputModeDidChangeNotification
                                             object:nil];
  if (!asked("no window")) {
    [self setWindow:[[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease]];
    [_window setRootViewController:[[[InputController alloc] init] autorelease]];
    [_window makeKeyAndVisible];
  }
  return !asked("refuse late");
}

- (void)inputModeChanged:(NSNotification *)notification {
  (void)notification;
  id const mode = [_window textInputMode];
  say(@"input mode %@, identifier %@%s", [mode primaryLanguage], [mode valueForKey:@"identifier"],
      [NSThread isMainThread] ? "" : ", not on the main thread");
  if (asked("dismiss") && [[mode valueForKey:@"identifier"] isEqual:@"dictation"])
    say(@"dismissed: %s", [_window endEditing:YES] ? "yes" : "no");
}

- (BOOL)application:(UIApplication *)application
    shouldAllowExtensionPointIdentifier:(UIApplicationExtensionPointIdentifier)identifier {
  (void)application;
  say(@"asked for %@", identifier);
  return NO;
}

- (void)applicationWillEnterForeground:(UIApplication *)application {
  (void)application;
  say(@"will enter the foreground");
}

- (void)applicationDidBecomeActive:(UIApplication *)application {
  (void)application;
  say(@"active");
}

- (void)applicationWillTerminate:(UIApplication *)application {
  (void)application;
  say(@"will terminate%s", [NSThread isMainThread] ? "" : " on another thread");
}

@end

// Has nothing but the oldest way of being handed a URL.
@interface HandleURLDelegate : InputDelegate
@end

@implementation HandleURLDelegate
- (BOOL)application:(UIApplication *)application handleOpenURL:(NSURL *)url {
  say(@"handle %@, state %ld", [url absoluteString], (long)[application applicationState]);
  return YES;
}
@end

@interface SourceURLDelegate : HandleURLDelegate
@end

@implementation SourceURLDelegate
- (BOOL)application:(UIApplication *)application
              openURL:(NSURL *)url
    sourceApplication:(NSString *)sourceApplication
           annotation:(id)annotation {
  say(@"open %@ from %@ with %@, state %ld", [url absoluteString], sourceApplication, annotation,
      (long)[application applicationState]);
  return YES;
}
@end

// Has all three ways.
@interface OptionsURLDelegate : SourceURLDelegate
@end

@implementation OptionsURLDelegate
- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  say(@"open %@ with options %@, state %ld", [url absoluteString], inOrder(options),
      (long)[application applicationState]);
  return YES;
}
@end

// Has nothing but the newest.
@interface OptionsOnlyDelegate : InputDelegate
@end

@implementation OptionsOnlyDelegate
- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  (void)application;
  (void)url;
  (void)options;
  say(@"open with options");
  return YES;
}
@end

int main(int argc, char *argv[]) {
  @autoreleasepool {
    const char *const delegate = std::getenv("INPUT_DELEGATE");
    return UIApplicationMain(argc, argv, @"InputApplication",
                             delegate ? [NSString stringWithUTF8String:delegate] : @"OptionsURLDelegate");
  }
}
