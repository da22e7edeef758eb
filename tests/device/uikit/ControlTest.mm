#import "UIKitTest.h"

#import "TouchEvents.h"

@interface ActionTarget : NSObject {
@public
  std::string name;
  UIControl *removesItselfFrom;
}
@end

@implementation ActionTarget
- (void)plain {
  notes->push_back(name + " plain");
}
- (void)from:(id)sender {
  notes->push_back(name + " from " + ([sender isKindOfClass:[UIControl class]] ? "control" : "other"));
}
- (void)from:(id)sender event:(UIEvent *)event {
  notes->push_back(name + (sender && event ? " with event" : " without event"));
  [removesItselfFrom removeTarget:self action:NULL forControlEvents:UIControlEventAllEvents];
}
- (void)second:(id)sender {
  (void)sender;
  notes->push_back(name + " second");
}
@end

// A control that will not be tracked.
@interface AloofControl : UIControl
@end

@implementation AloofControl
- (BOOL)beginTrackingWithTouch:(UITouch *)touch withEvent:(UIEvent *)event {
  (void)touch;
  (void)event;
  notes->push_back("asked");
  return NO;
}
@end

// Answers an action at the end of a chain.
@interface AnsweringView : UIView
@end

@implementation AnsweringView
- (void)found:(id)sender {
  notes->push_back(sender ? "found with sender" : "found");
}
@end

@interface AnsweringController : UIViewController
@end

@implementation AnsweringController
- (void)found:(id)sender {
  (void)sender;
  notes->push_back("found by controller");
}
@end

namespace {

class Control : public UIKitTest {
protected:
  ActionTarget *target(const char *name = "target") {
    ActionTarget *const made = [[[ActionTarget alloc] init] autorelease];
    made->name = name;
    return made;
  }

  void send(UITouch *touch, UITouchPhase phase) {
    [touch qvdevice_setPhase:phase];
    [application sendEvent:[UIEvent qvdevice_eventWithTouch:touch]];
  }

  void touch(CGFloat x, CGFloat y) {
    UITouch *const made = [UITouch qvdevice_touchAtPoint:CGPointMake(x, y)];
    send(made, UITouchPhaseBegan);
    send(made, UITouchPhaseEnded);
  }
};

TEST_F(Control, ATouchGoesDownAndUpInside) {
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), shownWindow());
  ActionTarget *const down = target("down"), *const inside = target("inside"), *const outside = target("outside");
  [control addTarget:down action:@selector(from:event:) forControlEvents:UIControlEventTouchDown];
  [control addTarget:inside action:@selector(from:event:) forControlEvents:UIControlEventTouchUpInside];
  [control addTarget:outside action:@selector(from:event:) forControlEvents:UIControlEventTouchUpOutside];
  UITouch *const finger = [UITouch qvdevice_touchAtPoint:CGPointMake(10, 10)];
  send(finger, UITouchPhaseBegan);
  EXPECT_TRUE([control isTracking]);
  EXPECT_TRUE([control isTouchInside]);
  EXPECT_TRUE([control isHighlighted]);
  EXPECT_EQ([control state], UIControlStateHighlighted);
  send(finger, UITouchPhaseEnded);
  EXPECT_FALSE([control isTracking]);
  EXPECT_FALSE([control isHighlighted]);
  EXPECT_EQ(written, (Notes{"down with event", "inside with event"}));
}

TEST_F(Control, ATouchThatEndsWhereTheControlNoLongerIsEndsOutside) {
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), shownWindow());
  ActionTarget *const outside = target("outside"), *const inside = target("inside");
  [control addTarget:inside action:@selector(plain) forControlEvents:UIControlEventTouchUpInside];
  [control addTarget:outside action:@selector(plain) forControlEvents:UIControlEventTouchUpOutside];
  UITouch *const finger = [UITouch qvdevice_touchAtPoint:CGPointMake(10, 10)];
  send(finger, UITouchPhaseBegan);
  [control setFrame:CGRectMake(100, 100, 50, 50)];
  send(finger, UITouchPhaseEnded);
  EXPECT_EQ(written, Notes{"outside plain"});
}

TEST_F(Control, ATouchThatIsCancelledSaysSo) {
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), shownWindow());
  ActionTarget *const all = target("cancelled");
  [control addTarget:all action:@selector(plain) forControlEvents:UIControlEventTouchCancel];
  UITouch *const finger = [UITouch qvdevice_touchAtPoint:CGPointMake(10, 10)];
  send(finger, UITouchPhaseBegan);
  send(finger, UITouchPhaseCancelled);
  send(finger, UITouchPhaseEnded);
  EXPECT_EQ(written, Notes{"cancelled plain"});
  EXPECT_FALSE([control isTracking]);
}

TEST_F(Control, ADisabledControlKeepsItsTouchesAndDoesNothing) {
  UIWindow *const window = shownWindow();
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), window);
  ActionTarget *const all = target();
  [control addTarget:all action:@selector(plain) forControlEvents:UIControlEventAllEvents];
  [control setEnabled:NO];
  EXPECT_EQ([control state], UIControlStateDisabled);
  touch(10, 10);
  EXPECT_EQ(written, Notes{});
}

TEST_F(Control, AControlMayRefuseToTrackATouch) {
  AloofControl *const control = view<AloofControl>(CGRectMake(0, 0, 50, 50), shownWindow());
  ActionTarget *const all = target();
  [control addTarget:all action:@selector(plain) forControlEvents:UIControlEventAllEvents];
  touch(10, 10);
  EXPECT_EQ(written, Notes{"asked"});
}

TEST_F(Control, ActionsAreSentInTheOrderInWhichTheyWereAddedEachWithWhatItTakes) {
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), shownWindow());
  ActionTarget *const first = target("first"), *const second = target("second");
  [control addTarget:first action:@selector(plain) forControlEvents:UIControlEventValueChanged];
  [control addTarget:second action:@selector(from:) forControlEvents:UIControlEventValueChanged];
  [control addTarget:first action:@selector(from:event:) forControlEvents:UIControlEventValueChanged];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  EXPECT_EQ(written, (Notes{"first plain", "second from control", "first without event"}));
}

TEST_F(Control, AnActionAddedTwiceIsSentOnceForEachOfItsEvents) {
  UIControl *const control = view<UIControl>(CGRectZero);
  ActionTarget *const one = target();
  [control addTarget:one action:@selector(plain) forControlEvents:UIControlEventValueChanged];
  [control addTarget:one action:@selector(plain) forControlEvents:UIControlEventValueChanged];
  [control addTarget:one action:@selector(plain) forControlEvents:UIControlEventTouchDown];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  [control sendActionsForControlEvents:UIControlEventTouchDown];
  [control sendActionsForControlEvents:UIControlEventTouchCancel];
  EXPECT_EQ(written, (Notes{"target plain", "target plain"}));
  EXPECT_EQ([control allControlEvents], UIControlEventValueChanged | UIControlEventTouchDown);
  EXPECT_EQ(text([control actionsForTarget:one forControlEvent:UIControlEventTouchDown]), "(plain)");
  EXPECT_EQ([control actionsForTarget:one forControlEvent:UIControlEventTouchCancel], nil);
}

TEST_F(Control, ATargetIsRemovedByItselfItsActionAndItsEvents) {
  UIControl *const control = view<UIControl>(CGRectZero);
  ActionTarget *const a = target("a"), *const b = target("b");
  for (ActionTarget *each in @[ a, b ]) {
    [control addTarget:each action:@selector(plain) forControlEvents:UIControlEventValueChanged];
    [control addTarget:each action:@selector(second:) forControlEvents:UIControlEventValueChanged];
  }
  [control removeTarget:a action:@selector(plain) forControlEvents:UIControlEventValueChanged];
  [control removeTarget:b action:NULL forControlEvents:UIControlEventTouchDown];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  EXPECT_EQ(written, (Notes{"a second", "b plain", "b second"}));
  written.clear();
  [control removeTarget:nil action:@selector(second:) forControlEvents:UIControlEventAllEvents];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  EXPECT_EQ(written, Notes{"b plain"});
  EXPECT_EQ([[control allTargets] count], 1u);
}

TEST_F(Control, ATargetMayRemoveItselfWhileItIsSentItsAction) {
  UIControl *const control = view<UIControl>(CGRectZero);
  ActionTarget *const one = target("one"), *const two = target("two");
  one->removesItselfFrom = control;
  [control addTarget:one action:@selector(from:event:) forControlEvents:UIControlEventValueChanged];
  [control addTarget:two action:@selector(plain) forControlEvents:UIControlEventValueChanged];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  EXPECT_EQ(written, (Notes{"one without event", "two plain", "two plain"}));
}

TEST_F(Control, ATargetThatIsGoneIsSentNothing) {
  UIControl *const control = view<UIControl>(CGRectZero);
  ActionTarget *const brief = [[ActionTarget alloc] init];
  [control addTarget:brief action:@selector(plain) forControlEvents:UIControlEventValueChanged];
  [brief release];
  [control sendActionsForControlEvents:UIControlEventValueChanged];
  EXPECT_EQ(written, Notes{});
  EXPECT_EQ([[control allTargets] count], 0u);
}

TEST_F(Control, WithoutATargetAnActionGoesUpTheChainFromTheControl) {
  AnsweringView *const answering = view<AnsweringView>(CGRectMake(0, 0, 100, 100), shownWindow());
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), answering);
  [control addTarget:nil action:@selector(found:) forControlEvents:UIControlEventTouchUpInside];
  touch(10, 10);
  EXPECT_EQ(written, Notes{"found with sender"});
  EXPECT_TRUE([[control allTargets] containsObject:[NSNull null]]);
}

TEST_F(Control, WithoutATargetAnActionBeginsAtTheFirstResponderWhenThereIsOne) {
  UIWindow *const window = shownWindow();
  AnsweringView *const answering = view<AnsweringView>(CGRectMake(0, 0, 100, 100), window);
  UIControl *const control = view<UIControl>(CGRectMake(0, 0, 50, 50), window);
  UITextField *const field = view<UITextField>(CGRectMake(0, 60, 50, 20), answering);
  EXPECT_FALSE([application sendAction:@selector(found:) to:nil from:control forEvent:nil]);
  ASSERT_TRUE([field becomeFirstResponder]);
  EXPECT_TRUE([application sendAction:@selector(found:) to:nil from:control forEvent:nil]);
  EXPECT_TRUE([application sendAction:@selector(found:) to:nil from:nil forEvent:nil]);
  EXPECT_EQ(written, (Notes{"found with sender", "found"}));
}

TEST_F(Control, WithoutAnybodyToBeginAtAnActionGoesToTheControllerThatIsSeen) {
  const auto send = [&] { return [application sendAction:@selector(found:) to:nil from:nil forEvent:nil] != NO; };
  EXPECT_FALSE(send()) << "no window";
  UIWindow *const window = shownWindow();
  EXPECT_FALSE(send()) << "no controller";
  AnsweringController *const answering = [[[AnsweringController alloc] init] autorelease];
  UINavigationController *const navigation =
      [[[UINavigationController alloc] initWithRootViewController:answering] autorelease];
  [window setRootViewController:navigation];
  EXPECT_TRUE(send()) << "on top of a navigation controller";
  UIViewController *const cover = [[[UIViewController alloc] init] autorelease];
  [navigation presentViewController:cover animated:NO completion:nil];
  EXPECT_FALSE(send()) << "covered";
  [cover presentViewController:[[[AnsweringController alloc] init] autorelease] animated:NO completion:nil];
  EXPECT_TRUE(send()) << "the uppermost";
  EXPECT_EQ(written, (Notes{"found by controller", "found by controller"}));
}

TEST_F(Control, AnActionThatItsTargetDoesNotAnswerIsNotSent) {
  EXPECT_FALSE([application sendAction:@selector(found:) to:target() from:nil forEvent:nil]);
}

TEST_F(Control, AButtonShowsTheTitleOfItsState) {
  UIButton *const button = [UIButton buttonWithType:UIButtonTypeSystem];
  EXPECT_EQ([button buttonType], UIButtonTypeSystem);
  EXPECT_EQ([button currentTitle], nil);
  [button setTitle:@"Save" forState:UIControlStateNormal];
  [button setTitle:@"Saving" forState:UIControlStateDisabled];
  EXPECT_EQ(text([button currentTitle]), "Save");
  EXPECT_EQ(text([[button titleLabel] text]), "Save");
  EXPECT_EQ(text([button titleForState:UIControlStateSelected]), "Save");
  [button setEnabled:NO];
  EXPECT_EQ(text([button currentTitle]), "Saving");
  EXPECT_EQ(text([[button titleLabel] text]), "Saving");
  [button setEnabled:YES];
  [button setSelected:YES];
  EXPECT_EQ(text([[button titleLabel] text]), "Save");
  [button setTitle:nil forState:UIControlStateNormal];
  EXPECT_EQ([[button titleLabel] text], nil);
}

TEST_F(Control, TheLabelOfAButtonLeavesItsTouchesToTheButton) {
  UIWindow *const window = shownWindow();
  UIButton *const button = view<UIButton>(CGRectMake(0, 0, 50, 50), window);
  [button setTitle:@"Save" forState:UIControlStateNormal];
  [window layoutIfNeeded];
  EXPECT_TRUE(CGRectEqualToRect([[button titleLabel] frame], CGRectMake(0, 0, 50, 50)));
  EXPECT_EQ([window hitTest:CGPointMake(10, 10) withEvent:nil], button);
}

} // namespace
