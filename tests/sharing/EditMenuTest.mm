// The callout bar over a text field, and the app's own entries in it.
#import "SharingTest.h"

#import "UICalloutBar.h"

#include <objc/runtime.h>

namespace {

class EditMenu : public SharingTest {
protected:
  void SetUp() override {
    SharingTest::SetUp();
    field = [[UITextField alloc] initWithFrame:CGRectMake(0, 0, 100, 30)];
    [[sharing::presenter() view] addSubview:field];
    [field setText:@"a secret"];
    [field becomeFirstResponder];
    [field select:nil];
    [[UIPasteboard generalPasteboard] setString:@"pasted"];
    allow(1, 0, 1);
  }
  void TearDown() override {
    [[UIMenuController sharedMenuController] setMenuItems:nil];
    [[UIPasteboard generalPasteboard] setItems:@[]];
    [field removeFromSuperview];
    [field release];
    SharingTest::TearDown();
  }

  id target(SEL action) { return [[UICalloutBar sharedCalloutBar] targetForAction:action]; }
  Lines shown() {
    [[UIMenuController sharedMenuController] setMenuVisible:YES animated:NO];
    Lines titles;
    for (UIMenuItem *item in [[UICalloutBar sharedCalloutBar] entries])
      titles.push_back([[item title] UTF8String]);
    [[UIMenuController sharedMenuController] setMenuVisible:NO animated:NO];
    return titles;
  }

  UITextField *field = nil;
};

const Lines kSuppressed = {"3 suppress: copy: on UITextField", "3 suppress: cut: on UITextField"};

} // namespace

TEST_F(EditMenu, FindsNobodyForCopyAndCutWhenThePasteboardIsNotAllowedAndSaysSoEachTime) {
  EXPECT_EQ(target(@selector(copy:)), nil);
  EXPECT_EQ(target(@selector(cut:)), nil);
  EXPECT_EQ(support::log(), kSuppressed);
  target(@selector(cut:));
  EXPECT_EQ(support::log().size(), 3U);
}

TEST_F(EditMenu, StillFindsThePlatformsTargetsForEveryOtherAction) {
  EXPECT_EQ(target(@selector(paste:)), field);
  EXPECT_EQ(target(@selector(selectAll:)), field);
  EXPECT_EQ(target(@selector(resignFirstResponder)), field);
  EXPECT_EQ(support::log(), Lines());
}

TEST_F(EditMenu, FindsThePlatformsTargetsAndLogsNothingWhenThePasteboardIsAllowed) {
  for (const NSInteger policy : {1, 2}) {
    sdk->pasteboardPolicy = policy;
    for (const SEL action : { @selector(copy:), @selector(cut:), @selector(paste:), @selector(selectAll:) })
      EXPECT_EQ(target(action), field) << sel_getName(action);
  }
  EXPECT_EQ(support::log(), Lines());
}

TEST_F(EditMenu, IsNilWithoutALineOrAQuestionWhenThePlatformFindsNobody) {
  [field setText:@"nothing is selected"];
  sdk->questions = 0;
  EXPECT_EQ(target(@selector(copy:)), nil);
  EXPECT_EQ(target(@selector(cut:)), nil);
  EXPECT_EQ(support::log(), Lines());
  EXPECT_EQ(sdk->questions, 0);
}

TEST_F(EditMenu, HasNeitherCopyNorCutBeforeTheSDKIsReady) {
  allowAll();
  sdk->ready = NO;
  EXPECT_EQ(target(@selector(copy:)), nil);
  EXPECT_EQ(target(@selector(cut:)), nil);
  EXPECT_EQ(support::log(), kSuppressed);
}

TEST_F(EditMenu, HasNeitherCopyNorCutWithoutAnSDK) {
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:nil];
  EXPECT_EQ(target(@selector(copy:)), nil);
  EXPECT_EQ(target(@selector(cut:)), nil);
}

TEST_F(EditMenu, FollowsAChangedPolicyAtTheNextQuestion) {
  EXPECT_EQ(target(@selector(copy:)), nil);
  sdk->pasteboardPolicy = 1;
  EXPECT_EQ(target(@selector(copy:)), field);
  sdk->pasteboardPolicy = 7;
  EXPECT_EQ(target(@selector(copy:)), nil);
}

TEST_F(EditMenu, ShowsNoCopyAndNoCutWhenThePasteboardIsNotAllowed) {
  EXPECT_EQ(shown(), (Lines{"Paste", "Select All"}));
  sdk->pasteboardPolicy = 1;
  EXPECT_EQ(shown(), (Lines{"Cut", "Copy", "Paste", "Select All"}));
}

TEST_F(EditMenu, ComparesActionsByNameWhateverPointerTheyComeAs) {
  // Of a name with a type the runtime keeps a pointer of its own.
  EXPECT_EQ(target(sel_registerTypedName("copy:", "v24@0:8@16")), nil);
}

TEST_F(EditMenu, LeavesEveryOtherViewAlone) {
  const Method ours = class_getInstanceMethod([UIView class], sel_registerName("sb_targetForAction:"));
  ASSERT_NE(ours, nullptr);
  EXPECT_FALSE([UIView instancesRespondToSelector:@selector(targetForAction:)]);
  // The bar's are its own: the platform's implementation under our name, and the other way round.
  const Method bars = class_getInstanceMethod([UICalloutBar class], @selector(targetForAction:));
  EXPECT_EQ(method_getImplementation(bars), method_getImplementation(ours));
  EXPECT_NE(
      method_getImplementation(class_getInstanceMethod([UICalloutBar class], sel_registerName("sb_targetForAction:"))),
      method_getImplementation(ours));
}

TEST_F(EditMenu, LogsTheAppsOwnEntriesInOrderAndSetsThemUnchanged) {
  NSArray *const items = @[
    [[[UIMenuItem alloc] initWithTitle:@"Shout" action:@selector(shout:)] autorelease],
    [[[UIMenuItem alloc] initWithTitle:@"Whisper" action:@selector(whisper:)] autorelease]
  ];
  [[UIMenuController sharedMenuController] setMenuItems:items];
  EXPECT_EQ(support::log(),
            (Lines{"4 Setting menu items:", "4 title: Shout action: shout:", "4 title: Whisper action: whisper:"}));
  EXPECT_EQ([[UIMenuController sharedMenuController] menuItems], items);
}

TEST_F(EditMenu, LogsOneLineForAnEmptyArrayWhichThePlatformGets) {
  [[UIMenuController sharedMenuController]
      setMenuItems:@[ [[[UIMenuItem alloc] initWithTitle:@"Shout" action:@selector(shout:)] autorelease] ]];
  support::clearLog();
  [[UIMenuController sharedMenuController] setMenuItems:@[]];
  EXPECT_EQ(support::log(), (Lines{"4 Setting menu items:"}));
  EXPECT_TRUE([[[UIMenuController sharedMenuController] menuItems] isEqual:@[]]);
}

TEST_F(EditMenu, TakesNilAndEntriesWithoutTitleOrAction) {
  [[UIMenuController sharedMenuController] setMenuItems:nil];
  EXPECT_EQ(support::log(), (Lines{"4 Setting menu items:"}));
  EXPECT_EQ([[UIMenuController sharedMenuController] menuItems], nil);
  support::clearLog();
  [[UIMenuController sharedMenuController] setMenuItems:@[ [[[UIMenuItem alloc] init] autorelease] ]];
  EXPECT_EQ(support::log(), (Lines{"4 Setting menu items:", "4 title: (null) action: (null)"}));
}

TEST_F(EditMenu, LetsNoCopyOutWhoeverChoosesFromIt) {
  EXPECT_EQ(shown(), (Lines{"Paste", "Select All"}));
  EXPECT_EQ(sharing::whatLeft().size(), 1U); // what lay there before
  EXPECT_EQ(sharing::whatLeft(), Lines());
}
