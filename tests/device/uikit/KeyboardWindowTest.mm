#include "UIKitTest.h"

@interface VisibilityListener : NSObject
@end

@implementation VisibilityListener
- (void)note:(NSNotification *)notification {
  notes->push_back([[NSString stringWithFormat:@"%@ %@", NSStringFromClass([[notification object] class]),
                                               [[notification object] isHidden] ? @"hidden" : @"visible"] UTF8String]);
}
@end

namespace {

class KeyboardWindow : public UIKitTest {
protected:
  void SetUp() override {
    UIKitTest::SetUp();
    window = shownWindow();
    first = view<UITextField>(CGRectMake(0, 0, 100, 40), window);
    second = view<UITextField>(CGRectMake(0, 50, 100, 40), window);
    for (NSString *name in @[ UIWindowDidBecomeVisibleNotification, UIWindowDidBecomeHiddenNotification ])
      [[NSNotificationCenter defaultCenter] addObserver:listener selector:@selector(note:) name:name object:nil];
  }
  void TearDown() override {
    [[NSNotificationCenter defaultCenter] removeObserver:listener];
    UIKitTest::TearDown();
  }

  VisibilityListener *const listener = [[VisibilityListener alloc] init];
  UIWindow *window = nil;
  UITextField *first = nil, *second = nil;
};

TEST_F(KeyboardWindow, ComesWithEditingAndGoesWithIt) {
  [first becomeFirstResponder];
  EXPECT_EQ(written, Notes{"UITextEffectsWindow visible"});
  UIWindow *const keyboards = [[application windows] lastObject];
  EXPECT_TRUE([keyboards isKindOfClass:NSClassFromString(@"UITextEffectsWindow")]);
  [first resignFirstResponder];
  EXPECT_EQ(written, (Notes{"UITextEffectsWindow visible", "UITextEffectsWindow hidden"}));
}

TEST_F(KeyboardWindow, IsAboveAlertsAndNeverKey) {
  [first becomeFirstResponder];
  UIWindow *const keyboards = [[application windows] lastObject];
  EXPECT_GT([keyboards windowLevel], 2000);
  EXPECT_EQ([application keyWindow], window);
  [keyboards makeKeyAndVisible];
  EXPECT_EQ([application keyWindow], window);
}

TEST_F(KeyboardWindow, StaysWhileEditingGoesFromOneFieldToTheNext) {
  [first becomeFirstResponder];
  [second becomeFirstResponder];
  EXPECT_EQ(written, Notes{"UITextEffectsWindow visible"});
  EXPECT_TRUE([second isFirstResponder]);
}

TEST_F(KeyboardWindow, GoesWithTheFieldThatWasWrittenInto) {
  [first becomeFirstResponder];
  [first removeFromSuperview];
  EXPECT_EQ(written, (Notes{"UITextEffectsWindow visible", "UITextEffectsWindow hidden"}));
}

TEST_F(KeyboardWindow, IsOneForTheWholeApp) {
  [first becomeFirstResponder];
  [first resignFirstResponder];
  [second becomeFirstResponder];
  EXPECT_EQ([[application windows] count], 2u);
}

TEST_F(KeyboardWindow, LetsTouchesThrough) {
  [first becomeFirstResponder];
  EXPECT_EQ([[[application windows] lastObject] hitTest:CGPointMake(10, 10) withEvent:nil], nil);
}

} // namespace
