// What the user and other apps do to an app, from the events file down to the app's own code.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Has a button that begins to edit, a text field, and says what it hears of.
constexpr const char* kApp = R"(
#import <UIKit/UIKit.h>
#include <stdlib.h>

static void say(NSString *text) { puts([text UTF8String]); fflush(stdout); }

@interface Controller : UIViewController { UITextField *_field; } @end
@implementation Controller
- (void)viewDidLoad {
  [super viewDidLoad];
  UIButton *edit = [UIButton buttonWithType:UIButtonTypeSystem];
  [edit setFrame:CGRectMake(10, 100, 100, 40)];
  [edit setTitle:@"Edit it" forState:UIControlStateNormal];
  [edit addTarget:self action:@selector(edit) forControlEvents:UIControlEventTouchUpInside];
  [[self view] addSubview:edit];
  _field = [[UITextField alloc] initWithFrame:CGRectMake(10, 200, 100, 40)];
  [_field addTarget:self action:@selector(changed) forControlEvents:UIControlEventEditingChanged];
  [[self view] addSubview:_field];
}
- (void)edit { say(@"edit"); [_field becomeFirstResponder]; }
- (void)changed { say([_field text]); }
- (void)shout:(id)sender { say(@"shout"); }
@end

@interface Delegate : UIResponder <UIApplicationDelegate> { UIWindow *_window; } @end
@implementation Delegate
- (BOOL)application:(UIApplication *)application didFinishLaunchingWithOptions:(NSDictionary *)options {
  if (options)
    say([NSString stringWithFormat:@"launched with %@ from %@",
        [[options objectForKey:UIApplicationLaunchOptionsURLKey] absoluteString],
        [options objectForKey:UIApplicationLaunchOptionsSourceApplicationKey]]);
  if ([application respondsToSelector:@selector(terminateWithSuccess)]) say(@"can terminate");
  [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(inputModeChanged)
      name:UITextInputCurrentInputModeDidChangeNotification object:nil];
  _window = [[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]];
  [_window setRootViewController:[[Controller alloc] init]];
  [_window makeKeyAndVisible];
  return YES;
}
- (void)inputModeChanged {
  NSString *mode = [[_window textInputMode] valueForKey:@"identifier"];
  say([NSString stringWithFormat:@"mode %@", mode]);
  if (getenv("REFUSE_DICTATION") && [mode isEqual:@"dictation"]) [_window endEditing:YES];
}
- (BOOL)application:(UIApplication *)application openURL:(NSURL *)url options:(NSDictionary *)options {
  say([NSString stringWithFormat:@"opened %@ from %@", [url absoluteString],
      [options objectForKey:UIApplicationOpenURLOptionsSourceApplicationKey]]);
  return YES;
}
@end

int main(int argc, char *argv[]) {
  @autoreleasepool { return UIApplicationMain(argc, argv, nil, @"Delegate"); }
}
)";

std::vector<std::string> outputOf(const Ended& ended) {
  std::vector<std::string> lines;
  for (const auto& line : objectsOf(ended.out, "output")) {
    lines.push_back(line["text"]);
  }
  return lines;
}

/// A run of the app alone, without the library.
Ended played(const std::string& events, const std::vector<std::string>& options = {},
             const std::vector<std::string>& environment = {}) {
  const WorkFolder folder;
  std::vector<std::string> arguments{"run", "--json", "--no-library", "--events", folder.write("events", events)};
  arguments.insert(arguments.end(), options.begin(), options.end());
  arguments.push_back(folder.app("User", kApp));
  return qvdevice(arguments, environment);
}

TEST(User, tapsTypesAndAsksForActions) {
  const Ended ended = played("tap Edit it\ntype a \nperform shout:\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), ElementsAre("can terminate", "edit", "a", "shout"));
}

TEST(User, touchesTheScreenAtAPlace) {
  const Ended ended = played("touch\ntouch 20.5 110\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), ElementsAre("can terminate", "edit"));
}

TEST(User, dictatesAndGoesBackToTheKeyboard) {
  const Ended ended = played("tap Edit it\ndictate one two\nkeyboard\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  const auto lines = outputOf(ended);
  ASSERT_EQ(lines.size(), 5u) << ended.out;
  EXPECT_EQ(lines[2], "mode dictation");
  EXPECT_EQ(lines[3], "one two");
  EXPECT_NE(lines[4], "mode dictation");
}

TEST(User, whoseDictationIsDismissedFailsTheRunWithTheLine) {
  const Ended ended = played("tap Edit it\n\ndictate secret\n", {}, {"REFUSE_DICTATION=1"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(objectsOf(ended.out, "end")[0]["sentence"],
            "User (line 3 of the events) refused \"dictate\": dictation was dismissed");
  EXPECT_THAT(outputOf(ended), testing::Not(testing::Contains("secret")));
}

TEST(OtherApps, handOverUrlsAlsoToAnAppInTheBackground) {
  const Ended ended = played("open notes://a from com.example.mail\nbackground\nopen notes://b/#c\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), ElementsAre("can terminate", "opened notes://a from com.example.mail",
                                           "opened notes://b/#c from (null)"));
}

TEST(OtherApps, launchTheAppWithAUrl) {
  const Ended ended = played("", {"--launch-url", "notes://a", "--launch-source", "com.example.mail"});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  const auto lines = outputOf(ended);
  ASSERT_FALSE(lines.empty());
  EXPECT_EQ(lines[0], "launched with notes://a from com.example.mail");
}

TEST(OtherApps, cannotLaunchTheAppWithWhatIsNoUrl) {
  const Ended ended = played("", {"--launch-url", "notes"});
  EXPECT_EQ(ended.status, 69);
  EXPECT_THAT(objectsOf(ended.out, "end")[0].value("sentence", ""), HasSubstr("User could not start: QVDevice: "));
}

TEST(Device, withoutTerminateWithSuccessHasAnApplicationThatDoesNotAnswerToIt) {
  const Ended ended = played("", {"--without-terminate-with-success"});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), testing::IsEmpty());
}

} // namespace
