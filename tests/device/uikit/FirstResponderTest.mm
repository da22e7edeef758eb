#import "UIKitTest.h"

#import "Raised.h"

// Says yes or no to everything that it is asked.
@interface WillingView : UIView {
@public
  BOOL unwilling;
  BOOL clinging;
}
@end

@implementation WillingView
- (BOOL)canBecomeFirstResponder {
  return !unwilling;
}
- (BOOL)canResignFirstResponder {
  return !clinging;
}
@end

namespace {

class FirstResponder : public UIKitTest {
protected:
  WillingView *willing(UIView *above) { return view<WillingView>(CGRectMake(0, 0, 10, 10), above); }
};

TEST_F(FirstResponder, AViewIsItOnceItWantsToBeAndIsOnAWindow) {
  UIWindow *const window = shownWindow();
  WillingView *const each = willing(window), *const loose = willing(nil), *const unwilling = willing(window);
  unwilling->unwilling = YES;
  EXPECT_FALSE([loose becomeFirstResponder]);
  EXPECT_FALSE([unwilling becomeFirstResponder]);
  EXPECT_FALSE([view(CGRectZero, window) becomeFirstResponder]) << "no plain view wants to";
  EXPECT_FALSE([each isFirstResponder]);
  EXPECT_TRUE([each becomeFirstResponder]);
  EXPECT_TRUE([each becomeFirstResponder]) << "again";
  EXPECT_TRUE([each isFirstResponder]);
}

TEST_F(FirstResponder, ThereIsOneAtATimeAndTheOldOneIsAsked) {
  UIWindow *const window = shownWindow();
  WillingView *const before = willing(window), *const after = willing(window);
  ASSERT_TRUE([before becomeFirstResponder]);
  before->clinging = YES;
  EXPECT_FALSE([after becomeFirstResponder]);
  EXPECT_FALSE([before resignFirstResponder]);
  EXPECT_TRUE([before isFirstResponder]);
  before->clinging = NO;
  EXPECT_TRUE([after becomeFirstResponder]);
  EXPECT_FALSE([before isFirstResponder]);
  EXPECT_TRUE([before resignFirstResponder]) << "it is not it any more";
  EXPECT_TRUE([after isFirstResponder]);
}

TEST_F(FirstResponder, EndEditingFindsItAnywhereBelowAndForceTakesItAnyway) {
  UIWindow *const window = shownWindow(), *const other = shownWindow();
  UIView *const middle = view(CGRectZero, window), *const beside = view(CGRectZero, window);
  WillingView *const each = willing(middle);
  EXPECT_FALSE([window endEditing:NO]) << "nothing is being edited";
  ASSERT_TRUE([each becomeFirstResponder]);
  EXPECT_FALSE([beside endEditing:YES]);
  EXPECT_FALSE([other endEditing:YES]);
  EXPECT_TRUE([each isFirstResponder]);
  EXPECT_TRUE([window endEditing:NO]);
  EXPECT_FALSE([each isFirstResponder]);
  ASSERT_TRUE([each becomeFirstResponder]);
  each->clinging = YES;
  EXPECT_FALSE([middle endEditing:NO]);
  EXPECT_TRUE([each isFirstResponder]);
  EXPECT_TRUE([middle endEditing:YES]);
  EXPECT_FALSE([each isFirstResponder]);
}

TEST_F(FirstResponder, AViewThatLeavesItsWindowIsItNoLonger) {
  UIWindow *const window = shownWindow();
  UIView *const middle = view(CGRectZero, window);
  WillingView *const each = willing(middle);
  each->clinging = YES;
  ASSERT_TRUE([each becomeFirstResponder]);
  [middle removeFromSuperview];
  EXPECT_FALSE([each isFirstResponder]);
  [window addSubview:middle];
  ASSERT_TRUE([each becomeFirstResponder]);
  [view(CGRectZero) addSubview:each];
  EXPECT_FALSE([each isFirstResponder]) << "moved to where no window is";
  [middle addSubview:each];
  ASSERT_TRUE([each becomeFirstResponder]);
  [window addSubview:each];
  EXPECT_TRUE([each isFirstResponder]) << "moved within its window";
  [each resignFirstResponder];
}

TEST_F(FirstResponder, EveryResponderKnowsTheInputMode) {
  UIWindow *const window = shownWindow();
  EXPECT_EQ(text([[window textInputMode] primaryLanguage]), "en-US");
  EXPECT_EQ([window textInputMode], [UITextInputMode currentInputMode]);
  EXPECT_EQ([application textInputMode], [UITextInputMode currentInputMode]);
  EXPECT_EQ(text([[UITextInputMode activeInputModes] valueForKey:@"primaryLanguage"]), "(\"en-US\", dictation)");
  EXPECT_EQ(text([[UITextInputMode activeInputModes] valueForKey:@"identifier"]),
            "(\"en_US@sw=QWERTY;hw=Automatic\", dictation)");
}

TEST_F(FirstResponder, AnInputModeOfNoKindInParticularHasNoIdentifier) {
  UITextInputMode *const plain = [[[UITextInputMode alloc] init] autorelease];
  EXPECT_FALSE([plain respondsToSelector:NSSelectorFromString(@"identifier")]);
  EXPECT_NE(raisedBy([&] { [plain valueForKey:@"identifier"]; }), "");
}

} // namespace
