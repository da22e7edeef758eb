#include "UIKitTest.h"

@interface Listener : NSObject {
@public
  UIWindow *grabs; // the key role whenever another window has lost it
}
@end

@implementation Listener
- (void)note:(NSNotification *)notification {
  UIWindow *const window = [notification object];
  NSString *const name = [[[notification name] stringByReplacingOccurrencesOfString:@"UIWindowDid" withString:@""]
      stringByReplacingOccurrencesOfString:@"Notification"
                                withString:@""];
  notes->push_back([[NSString stringWithFormat:@"%@ %ld", name, (long)[window tag]] UTF8String]);
  if (grabs && [name isEqual:@"ResignKey"]) [grabs makeKeyWindow];
}
@end

@interface TellingWindow : UIWindow
@end

@implementation TellingWindow
- (void)becomeKeyWindow {
  notes->push_back([self isKeyWindow] ? "become, is key" : "become, is not key");
}
- (void)resignKeyWindow {
  notes->push_back([self isKeyWindow] ? "resign, is key" : "resign, is not key");
}
@end

@interface HidingController : UIViewController
@end

@implementation HidingController
- (void)viewDidAppear:(BOOL)animated {
  [super viewDidAppear:animated];
  UIWindow *const window = [[self view] window];
  notes->push_back([window isKeyWindow] ? "didAppear, key" : "didAppear, not key");
  [window setHidden:YES];
}
@end

namespace {

class Window : public UIKitTest {
protected:
  void SetUp() override {
    UIKitTest::SetUp();
    listener = [[[Listener alloc] init] autorelease];
    for (NSString *name in @[
           UIWindowDidBecomeVisibleNotification, UIWindowDidBecomeHiddenNotification, UIWindowDidBecomeKeyNotification,
           UIWindowDidResignKeyNotification
         ])
      [[NSNotificationCenter defaultCenter] addObserver:listener selector:@selector(note:) name:name object:nil];
  }
  void TearDown() override {
    [[NSNotificationCenter defaultCenter] removeObserver:listener];
    UIKitTest::TearDown();
  }

  UIWindow *numbered(NSInteger number, UIWindowLevel level = UIWindowLevelNormal) {
    UIWindow *const window = [[[UIWindow alloc] initWithFrame:[[UIScreen mainScreen] bounds]] autorelease];
    [window setTag:number];
    [window setWindowLevel:level];
    return window;
  }

  std::vector<long> order() {
    std::vector<long> tags;
    for (UIWindow *window in [application windows])
      tags.push_back([window tag]);
    return tags;
  }

  Listener *listener = nil;
};

using Tags = std::vector<long>;

TEST_F(Window, LevelsAreNormalThenStatusBarThenAlert) {
  EXPECT_EQ(UIWindowLevelNormal, 0);
  EXPECT_EQ(UIWindowLevelStatusBar, 1000);
  EXPECT_EQ(UIWindowLevelAlert, 2000);
}

TEST_F(Window, TheApplicationListsHiddenWindowsToo) {
  UIWindow *const shown = numbered(1);
  numbered(2, UIWindowLevelAlert);
  [shown setHidden:NO];
  EXPECT_EQ(order(), (Tags{1, 2}));
  [shown setHidden:YES];
  EXPECT_EQ(order(), (Tags{1, 2}));
}

TEST_F(Window, OfOneLevelTheLastShownIsTheFrontmost) {
  UIWindow *const first = numbered(1), *const second = numbered(2);
  [first setHidden:NO];
  [second setHidden:NO];
  EXPECT_EQ(order(), (Tags{1, 2}));
  [first makeKeyAndVisible];
  EXPECT_EQ(order(), (Tags{2, 1}));
  [second makeKeyWindow];
  EXPECT_EQ(order(), (Tags{2, 1})) << "being key is no matter of order";
}

TEST_F(Window, ThatComesToAnotherLevelComesToItsFront) {
  UIWindow *const high = numbered(1, UIWindowLevelAlert + 1), *const normal = numbered(2), *const alert = numbered(3);
  [alert setWindowLevel:UIWindowLevelAlert];
  [high setHidden:NO];
  [normal setHidden:NO];
  EXPECT_EQ(order(), (Tags{2, 3, 1}));
  [high setWindowLevel:UIWindowLevelNormal];
  EXPECT_EQ(order(), (Tags{2, 1, 3}));
  [normal setWindowLevel:UIWindowLevelNormal];
  EXPECT_EQ(order(), (Tags{2, 1, 3})) << "the level that it has already";
}

TEST_F(Window, ThatIsShownAndMadeKeyIsToldFirstAsVisibleThenTheOtherResignsThenItIsKey) {
  UIWindow *const first = numbered(1), *const second = numbered(2);
  [first makeKeyAndVisible];
  [second makeKeyAndVisible];
  EXPECT_EQ(written, (Notes{"BecomeVisible 1", "BecomeKey 1", "BecomeVisible 2", "ResignKey 1", "BecomeKey 2"}));
}

TEST_F(Window, ThatIsShownAndKeyAlreadyTellsNothingWhenItIsShownAgain) {
  UIWindow *const window = numbered(1);
  [window makeKeyAndVisible];
  written.clear();
  [window makeKeyAndVisible];
  [window makeKeyWindow];
  [window setHidden:NO];
  EXPECT_EQ(written, Notes{});
}

TEST_F(Window, ThatIsShownIsNotKeyByThat) {
  UIWindow *const first = numbered(1), *const second = numbered(2);
  [first makeKeyAndVisible];
  [second setHidden:NO];
  EXPECT_EQ([application keyWindow], first);
}

TEST_F(Window, ThatIsHiddenWhileKeyGivesTheRoleToTheShownOneThatHadItLast) {
  UIWindow *const first = numbered(1), *const second = numbered(2), *const third = numbered(3), *never = numbered(4);
  for (UIWindow *each in @[ second, first, third ])
    [each makeKeyAndVisible];
  [never setHidden:NO];
  written.clear();
  [third setHidden:YES];
  EXPECT_EQ(written, (Notes{"ResignKey 3", "BecomeHidden 3", "BecomeKey 1"}));
  EXPECT_EQ([application keyWindow], first);
  [first setHidden:YES];
  EXPECT_EQ([application keyWindow], second);
  [second setHidden:YES];
  EXPECT_EQ([application keyWindow], nil) << "one that was never key does not become it by that";
}

TEST_F(Window, ThatGoesWhileKeyGivesTheRoleToAnother) {
  UIWindow *const first = numbered(1);
  [first makeKeyAndVisible];
  NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
  [numbered(2) makeKeyAndVisible];
  [inner drain];
  EXPECT_EQ([application keyWindow], first);
  EXPECT_EQ(order(), (Tags{1}));
}

TEST_F(Window, IsToldOfItsRoleBeforeOthersAre) {
  UIWindow *const telling = [[[TellingWindow alloc] init] autorelease], *const other = numbered(2);
  [telling setTag:1];
  [telling makeKeyAndVisible];
  [other makeKeyAndVisible];
  EXPECT_EQ(written, (Notes{"BecomeVisible 1", "become, is key", "BecomeKey 1", "BecomeVisible 2", "resign, is not key",
                            "ResignKey 1", "BecomeKey 2"}));
}

TEST_F(Window, ThatTakesTheRoleBackEachTimeDoesNotKeepItFromTheNext) {
  UIWindow *const first = numbered(1), *const second = numbered(2);
  [first makeKeyAndVisible];
  listener->grabs = first;
  [second makeKeyAndVisible];
  listener->grabs = nil;
  EXPECT_EQ([application keyWindow], second);
}

TEST_F(Window, IsKeyBeforeItsControllerHasAppearedWhichMayHideIt) {
  UIWindow *const main = numbered(1), *const brief = numbered(2, UIWindowLevelAlert);
  [main makeKeyAndVisible];
  [brief setRootViewController:[[[HidingController alloc] init] autorelease]];
  written.clear();
  [brief makeKeyAndVisible];
  EXPECT_EQ(written, (Notes{"BecomeVisible 2", "ResignKey 1", "BecomeKey 2", "didAppear, key", "ResignKey 2",
                            "BecomeHidden 2", "BecomeKey 1"}));
  EXPECT_TRUE([brief isHidden]);
  EXPECT_EQ([application keyWindow], main);
}

} // namespace
