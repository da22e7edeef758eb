// What the system itself shows over an app.
#include "ScreenTest.h"

#import "UIKit/InputModes.h"

namespace {

const Rgb kKeyboard{209, 213, 219};
const Rgb kMenu{38, 38, 41};

class SystemParts : public ScreenTest {
protected:
  void SetUp() override {
    ScreenTest::SetUp();
    window = windowOf([UIColor whiteColor]);
    [window setRootViewController:[[[UIViewController alloc] init] autorelease]];
    field = view<UITextField>(CGRectMake(50, 300, 200, 40), [[window rootViewController] view]);
    [field setText:@"Groceries"];
  }
  UIViewController *root() { return [window rootViewController]; }
  static int menuPixels(const Picture &picture) {
    int count = 0;
    for (size_t y = 240; y < 300; ++y)
      for (size_t x = 0; x < 390; ++x)
        count += at(picture, x, y) == kMenu ? 1 : 0;
    return count;
  }

  UIWindow *window = nil;
  UITextField *field = nil;
};

TEST_F(SystemParts, TheKeyboardIsThereWhileSomethingIsEdited) {
  EXPECT_EQ(at(screen(), 2, 600), kWhite);
  [field becomeFirstResponder];
  EXPECT_EQ(at(screen(), 2, 600), kKeyboard);
  [field resignFirstResponder];
  EXPECT_EQ(at(screen(), 2, 600), kWhite);
}

TEST_F(SystemParts, TheKeyboardGivesWayToDictation) {
  [field becomeFirstResponder];
  const Picture keys = screen();
  [UITextInputMode qvdevice_setDictating:YES];
  const Picture voice = screen();
  EXPECT_EQ(at(voice, 2, 600), kKeyboard);
  EXPECT_EQ(at(keys, 8, 636), kWhite) << "a key";
  EXPECT_EQ(at(voice, 8, 636), kKeyboard);
}

TEST_F(SystemParts, TheKeyboardIsNotThereBelowWhatIsPresented) {
  [field becomeFirstResponder];
  UIViewController *const above = [[[UIViewController alloc] init] autorelease];
  [above setModalPresentationStyle:UIModalPresentationOverFullScreen];
  [root() presentViewController:above animated:NO completion:nil];
  EXPECT_EQ(at(screen(), 2, 600), kWhite);
  UITextField *const inner = view<UITextField>(CGRectMake(50, 100, 200, 40), [above view]);
  [inner becomeFirstResponder];
  EXPECT_EQ(at(screen(), 2, 600), kKeyboard);
}

TEST_F(SystemParts, TheKeyboardIsNotThereBelowAnAlert) {
  [field becomeFirstResponder];
  UIAlertView *const alert = [[[UIAlertView alloc] init] autorelease];
  [alert setTitle:@"Saved"];
  [alert addButtonWithTitle:@"OK"];
  [alert show];
  EXPECT_FALSE(at(screen(), 2, 600) == kKeyboard);
  [alert dismissWithClickedButtonIndex:0 animated:NO];
}

TEST_F(SystemParts, TheEditMenuStandsOverWhatIsSelected) {
  [field becomeFirstResponder];
  [field selectAll:nil];
  EXPECT_EQ(menuPixels(screen()), 0);
  [[UIMenuController sharedMenuController] setMenuVisible:YES];
  EXPECT_GT(menuPixels(screen()), 1000);
  [[UIMenuController sharedMenuController] setMenuVisible:NO];
  EXPECT_EQ(menuPixels(screen()), 0);
}

TEST_F(SystemParts, TheEditMenuStandsBelowWhatIsAtTheTop) {
  [field setFrame:CGRectMake(50, 50, 200, 40)];
  [field becomeFirstResponder];
  [field selectAll:nil];
  [[UIMenuController sharedMenuController] setMenuVisible:YES];
  EXPECT_EQ(at(screen(), 60, 104), kMenu);
}

TEST_F(SystemParts, TheEditMenuIsNarrowerWithFewerEntries) {
  [field becomeFirstResponder];
  [field selectAll:nil];
  [[UIMenuController sharedMenuController] setMenuVisible:YES];
  const int both = menuPixels(screen());
  [field setSecureTextEntry:YES];
  UIMenuItem *const item = [[[UIMenuItem alloc] initWithTitle:@"Go" action:@selector(description)] autorelease];
  [[UIMenuController sharedMenuController] setMenuItems:@[ item ]];
  [[UIMenuController sharedMenuController] setMenuVisible:YES];
  EXPECT_LT(menuPixels(screen()), both / 2) << "nothing of a secret is cut or copied";
}

TEST_F(SystemParts, AnAlertDarkensWhatIsBehindAndHasABoxInTheMiddle) {
  UIAlertController *const alert = [UIAlertController alertControllerWithTitle:@"Really?" message:@"It is gone then."
                                                                preferredStyle:UIAlertControllerStyleAlert];
  for (NSString *title in @[ @"No", @"Yes" ])
    [alert addAction:[UIAlertAction actionWithTitle:title style:UIAlertActionStyleDefault handler:nil]];
  [root() presentViewController:alert animated:NO completion:nil];
  const Picture picture = screen();
  EXPECT_EQ(at(picture, 30, 700), (Rgb{194, 194, 194}));
  const Rgb box{247, 247, 247};
  EXPECT_EQ(at(picture, 80, 420), box);
  EXPECT_EQ(at(picture, 310, 420), box);
  EXPECT_FALSE(at(picture, 195, 430 + 20) == kWhite);
}

TEST_F(SystemParts, AShareSheetShowsWhatItOffers) {
  UIActivityViewController *const sheet = [[[UIActivityViewController alloc] initWithActivityItems:@[ @"a text" ]
                                                                             applicationActivities:nil] autorelease];
  [root() presentViewController:sheet animated:NO completion:nil];
  const Picture whole = screen();
  EXPECT_EQ(at(whole, 195, 100), (Rgb{194, 194, 194})) << "darkened above";
  [root() dismissViewControllerAnimated:NO completion:nil];
  UIActivityViewController *const less = [[[UIActivityViewController alloc] initWithActivityItems:@[ @"a text" ]
                                                                            applicationActivities:nil] autorelease];
  [less setExcludedActivityTypes:@[ UIActivityTypeCopyToPasteboard, UIActivityTypePrint ]];
  [root() presentViewController:less animated:NO completion:nil];
  const Picture fewer = screen();
  const auto top = [](const Picture &picture) {
    size_t y = 100;
    while (y < 800 && at(picture, 370, y) == Rgb{194, 194, 194})
      ++y;
    return y;
  };
  EXPECT_LT(top(whole) + 90, top(fewer)) << "two lines fewer";
}

TEST_F(SystemParts, ANavigationBarHasATitleAndAWayBack) {
  UIViewController *const first = [[[UIViewController alloc] init] autorelease];
  [first setTitle:@"First"];
  UINavigationController *const navigation =
      [[[UINavigationController alloc] initWithRootViewController:first] autorelease];
  [window setRootViewController:navigation];
  const Rgb bar{250, 250, 250};
  const CGRect middle = CGRectMake(120, 50, 150, 38), left = CGRectMake(5, 50, 80, 38);
  const Picture one = screen();
  EXPECT_GT(marks(one, middle, bar), 30);
  EXPECT_EQ(marks(one, left, bar), 0);
  [navigation pushViewController:[[[UIViewController alloc] init] autorelease] animated:NO];
  const Picture two = screen();
  EXPECT_EQ(marks(two, middle, bar), 0) << "the second has no title";
  EXPECT_GT(marks(two, left, bar), 30);
}

TEST_F(SystemParts, TheHomeScreenIsThereWhileTheAppIsInTheBackground) {
  [window setBackgroundColor:[UIColor redColor]];
  [application qvdevice_setState:UIApplicationStateBackground];
  EXPECT_FALSE(at(screen(), 195, 700) == kRed);
  [application qvdevice_setState:UIApplicationStateInactive];
  EXPECT_EQ(at(screen(), 195, 700), kRed);
}

TEST_F(SystemParts, TheStatusBarIsReadableOnAnything) {
  const CGRect time = CGRectMake(30, 15, 80, 25);
  EXPECT_GT(marks(screen(), time, kWhite), 30);
  [window setBackgroundColor:[UIColor blackColor]];
  EXPECT_GT(marks(screen(), time, Rgb{0, 0, 0}), 30);
}

} // namespace
