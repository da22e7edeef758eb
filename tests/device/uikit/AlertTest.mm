#include "Raised.h"
#include "UIKitTest.h"

@interface AlertDelegate : NSObject <UIAlertViewDelegate>
@end

@implementation AlertDelegate
- (void)alertView:(UIAlertView *)alertView clickedButtonAtIndex:(NSInteger)buttonIndex {
  notes->push_back([[NSString stringWithFormat:@"clicked %@%@", [alertView buttonTitleAtIndex:buttonIndex],
                                               [alertView isVisible] ? @", shown" : @""] UTF8String]);
}
- (void)alertView:(UIAlertView *)alertView didDismissWithButtonIndex:(NSInteger)buttonIndex {
  notes->push_back([[NSString stringWithFormat:@"dismissed with %ld%@", (long)buttonIndex,
                                               [alertView isVisible] ? @", shown" : @""] UTF8String]);
}
@end

namespace {

class Alert : public UIKitTest {
protected:
  void SetUp() override {
    UIKitTest::SetUp();
    main = shownWindow();
    [main setRootViewController:[[[UIViewController alloc] init] autorelease]];
  }

  static UIButton *buttonIn(UIView *view, NSString *title) {
    if ([view isKindOfClass:[UIButton class]] && [[(UIButton *)view currentTitle] isEqual:title])
      return (UIButton *)view;
    for (UIView *subview in [view subviews])
      if (UIButton *const found = buttonIn(subview, title)) return found;
    return nil;
  }
  void tap(NSString *title) {
    for (UIWindow *window in [application windows])
      if (UIButton *const button = buttonIn(window, title)) {
        [button sendActionsForControlEvents:UIControlEventTouchUpInside];
        return;
      }
    ADD_FAILURE() << "no button " << [title UTF8String];
  }

  UIAlertView *shownView() {
    UIAlertView *const view = [[[UIAlertView alloc] initWithTitle:@"Really?" message:@"It is gone then."
                                                         delegate:delegate
                                                cancelButtonTitle:@"No"
                                                otherButtonTitles:@"Yes", @"Perhaps", nil] autorelease];
    [view show];
    return view;
  }

  UIWindow *main = nil;
  AlertDelegate *const delegate = [[AlertDelegate alloc] init];
};

TEST_F(Alert, ControllerIsPresentedInTheWindowOfWhoPresentsIt) {
  UIAlertController *const alert = [UIAlertController alertControllerWithTitle:@"Title" message:@"Text"
                                                                preferredStyle:UIAlertControllerStyleAlert];
  [alert addAction:[UIAlertAction actionWithTitle:@"OK" style:UIAlertActionStyleDefault
                                          handler:^(UIAlertAction *action) {
                                            notes->push_back([[action title] UTF8String]);
                                          }]];
  [[main rootViewController] presentViewController:alert animated:YES completion:nil];
  EXPECT_EQ([[alert view] window], main);
  EXPECT_EQ([[[main rootViewController] view] window], main) << "what is below stays on the screen";
  EXPECT_EQ([[application windows] count], 1u);
  tap(@"OK");
  EXPECT_EQ(written, Notes{"OK"});
  EXPECT_EQ([[main rootViewController] presentedViewController], nil);
}

TEST_F(Alert, ControllerHasOneActionThatCancels) {
  UIAlertController *const alert = [UIAlertController alertControllerWithTitle:nil message:nil
                                                                preferredStyle:UIAlertControllerStyleAlert];
  [alert addAction:[UIAlertAction actionWithTitle:@"No" style:UIAlertActionStyleCancel handler:nil]];
  EXPECT_EQ(raisedBy([&] {
              [alert addAction:[UIAlertAction actionWithTitle:@"Never" style:UIAlertActionStyleCancel handler:nil]];
            }), "NSInternalInconsistencyException");
  EXPECT_EQ([[alert actions] count], 1u);
}

TEST_F(Alert, ActionThatIsDisabledCannotBeChosen) {
  UIAlertController *const alert = [UIAlertController alertControllerWithTitle:nil message:@"Text"
                                                                preferredStyle:UIAlertControllerStyleAlert];
  UIAlertAction *const action = [UIAlertAction actionWithTitle:@"Go" style:UIAlertActionStyleDefault handler:nil];
  [action setEnabled:NO];
  [alert addAction:action];
  EXPECT_FALSE([buttonIn([alert view], @"Go") isEnabled]);
}

TEST_F(Alert, ActionSheetIsAPopover) {
  UIAlertController *const sheet = [UIAlertController alertControllerWithTitle:nil message:nil
                                                                preferredStyle:UIAlertControllerStyleActionSheet];
  EXPECT_EQ([sheet modalPresentationStyle], UIModalPresentationPopover);
}

TEST_F(Alert, ViewHasAWindowOfItsOwnThatIsKeyAtTheLevelOfAlerts) {
  shownView();
  ASSERT_EQ([[application windows] count], 2u);
  UIWindow *const shim = [[application windows] lastObject];
  EXPECT_EQ([shim class], NSClassFromString(@"_UIAlertControllerShimPresenterWindow"));
  EXPECT_EQ([shim windowLevel], 2000);
  EXPECT_FALSE([shim isHidden]);
  EXPECT_EQ([application keyWindow], shim);
}

TEST_F(Alert, ViewGoesWithTheButtonAndGivesTheKeyRoleBack) {
  NSAutoreleasePool *const inner = [[NSAutoreleasePool alloc] init];
  shownView();
  tap(@"Perhaps");
  [inner drain];
  EXPECT_EQ(written, (Notes{"clicked Perhaps, shown", "dismissed with 2"}));
  EXPECT_EQ([application keyWindow], main);
  EXPECT_EQ([[application windows] count], 1u) << "the window is gone";
}

TEST_F(Alert, ViewCanBeDismissedByTheAppWithoutAClick) {
  UIAlertView *const view = shownView();
  EXPECT_EQ([view cancelButtonIndex], 0);
  EXPECT_EQ([view numberOfButtons], 3);
  [view dismissWithClickedButtonIndex:0 animated:NO];
  [view dismissWithClickedButtonIndex:0 animated:NO];
  EXPECT_EQ(written, Notes{"dismissed with 0"});
}

} // namespace
