#import "UIKitTest.h"

#import "TouchEvents.h"

// Larger for touches than it looks.
@interface RoomyView : UIView
@end

@implementation RoomyView
- (BOOL)pointInside:(CGPoint)point withEvent:(UIEvent *)event {
  (void)event;
  return point.x > -20 && point.x < 20;
}
@end

namespace {

using HitTesting = UIKitTest;

UIView *hit(UIView *view, CGFloat x, CGFloat y) { return [view hitTest:CGPointMake(x, y) withEvent:nil]; }

TEST_F(HitTesting, FindsTheFrontmostOfTheDeepestViews) {
  UIWindow *const window = shownWindow();
  UIView *const outer = view(CGRectMake(10, 10, 100, 100), window);
  UIView *const behind = view(CGRectMake(10, 10, 50, 50), outer), *const front =
                                                                      view(CGRectMake(30, 30, 50, 50), outer);
  EXPECT_EQ(hit(window, 5, 5), window);
  EXPECT_EQ(hit(window, 15, 15), outer);
  EXPECT_EQ(hit(window, 25, 25), behind);
  EXPECT_EQ(hit(window, 45, 45), front) << "where both are";
  EXPECT_EQ(hit(window, -1, 5), nil);
}

TEST_F(HitTesting, AViewHoldsItsUpperLeftEdgeAndNotItsLowerRightOne) {
  UIView *const each = view(CGRectMake(0, 0, 10, 10));
  EXPECT_EQ(hit(each, 0, 0), each);
  EXPECT_EQ(hit(each, 10, 5), nil);
  EXPECT_EQ(hit(each, 5, 10), nil);
  EXPECT_EQ(hit(view(CGRectZero), 0, 0), nil) << "without a size there is nothing to hit";
}

TEST_F(HitTesting, PassesByViewsThatAreHiddenFaintOrTakeNoTouches) {
  UIWindow *const window = shownWindow();
  UIView *const below = view([window bounds], window), *const above = view([window bounds], window);
  EXPECT_EQ(hit(window, 5, 5), above);
  [above setHidden:YES];
  EXPECT_EQ(hit(window, 5, 5), below);
  [above setHidden:NO];
  [above setAlpha:0.009];
  EXPECT_EQ(hit(window, 5, 5), below);
  [above setAlpha:0.01];
  EXPECT_EQ(hit(window, 5, 5), above);
  [above setUserInteractionEnabled:NO];
  EXPECT_EQ(hit(window, 5, 5), below);
  UIView *const inner = view([window bounds], above);
  EXPECT_EQ(hit(window, 5, 5), below) << "nor do those within";
  (void)inner;
  EXPECT_EQ(hit(view<UILabel>(CGRectMake(0, 0, 9, 9)), 1, 1), nil) << "a label takes none of itself";
}

TEST_F(HitTesting, AsksEachViewWhetherThePointIsInside) {
  UIWindow *const window = shownWindow();
  RoomyView *const roomy = view<RoomyView>(CGRectMake(100, 100, 1, 1), window);
  EXPECT_EQ(hit(window, 85, 100), roomy);
  EXPECT_EQ(hit(window, 80, 100), window);
}

TEST_F(HitTesting, ASubviewBeyondItsSuperviewsBoundsIsNotFound) {
  UIWindow *const window = shownWindow();
  UIView *const outer = view(CGRectMake(0, 0, 10, 10), window);
  UIView *const outside = view(CGRectMake(20, 20, 10, 10), outer);
  (void)outside;
  EXPECT_EQ(hit(window, 25, 25), window);
}

TEST_F(HitTesting, CoordinatesConvertThroughFramesAndBounds) {
  UIWindow *const window = shownWindow();
  UIView *const outer = view(CGRectMake(10, 20, 100, 100), window), *const inner =
                                                                        view(CGRectMake(5, 5, 50, 50), outer);
  UIView *const other = view(CGRectMake(1, 2, 10, 10), window);
  const auto expect = [](CGPoint point, CGFloat x, CGFloat y) {
    EXPECT_EQ(point.x, x);
    EXPECT_EQ(point.y, y);
  };
  expect([inner convertPoint:CGPointMake(1, 1) toView:outer], 6, 6);
  expect([inner convertPoint:CGPointMake(1, 1) toView:nil], 16, 26);
  expect([inner convertPoint:CGPointMake(1, 1) toView:other], 15, 24);
  expect([inner convertPoint:CGPointMake(16, 26) fromView:nil], 1, 1);
  expect([inner convertPoint:CGPointMake(15, 24) fromView:other], 1, 1);
  expect([inner convertPoint:CGPointMake(3, 4) toView:inner], 3, 4);
  [outer setBounds:CGRectMake(40, 30, 100, 100)]; // scrolled by 40 and 30
  expect([inner convertPoint:CGPointMake(41, 31) toView:nil], 16, 26);
  const CGRect rect = [inner convertRect:CGRectMake(41, 31, 7, 8) toView:nil];
  EXPECT_TRUE(CGRectEqualToRect(rect, CGRectMake(16, 26, 7, 8)));
  EXPECT_TRUE(CGRectEqualToRect([inner convertRect:rect fromView:nil], CGRectMake(41, 31, 7, 8)));
}

TEST_F(HitTesting, WithoutAWindowTheUppermostViewStandsInForIt) {
  UIView *const outer = view(CGRectMake(10, 20, 100, 100)), *const inner = view(CGRectMake(5, 5, 50, 50), outer);
  const CGPoint point = [inner convertPoint:CGPointMake(1, 1) toView:nil];
  EXPECT_EQ(point.x, 6);
  EXPECT_EQ(point.y, 6);
}

TEST_F(HitTesting, AScrolledViewsSubviewIsHitWhereItIsShown) {
  UIWindow *const window = shownWindow();
  UIView *const outer = view(CGRectMake(0, 0, 100, 100), window), *const inner =
                                                                      view(CGRectMake(0, 150, 100, 10), outer);
  EXPECT_EQ(hit(window, 5, 55), outer);
  [outer setBounds:CGRectMake(0, 100, 100, 100)];
  EXPECT_EQ(hit(window, 5, 55), inner);
}

TEST_F(HitTesting, ATouchIsOnTheUppermostWindowThatCoversItsPlace) {
  UIWindow *const low = shownWindow(), *const later = shownWindow();
  UIWindow *const alert = [[[UIWindow alloc] initWithFrame:CGRectMake(50, 60, 100, 100)] autorelease];
  [alert setWindowLevel:UIWindowLevelAlert];
  [alert setHidden:NO];
  UIView *const inner = view(CGRectMake(10, 10, 20, 20), alert);
  UITouch *touch = [UITouch qvdevice_touchAtPoint:CGPointMake(65, 77)];
  EXPECT_EQ([touch window], alert);
  EXPECT_EQ([touch view], inner);
  const CGPoint inWindow = [touch locationInView:nil], inView = [touch locationInView:inner];
  EXPECT_TRUE(CGPointEqualToPoint(inWindow, CGPointMake(15, 17)));
  EXPECT_TRUE(CGPointEqualToPoint(inView, CGPointMake(5, 7)));
  EXPECT_EQ([[UITouch qvdevice_touchAtPoint:CGPointMake(5, 5)] window], later) << "the newer of two on a level";
  [later setHidden:YES];
  EXPECT_EQ([[UITouch qvdevice_touchAtPoint:CGPointMake(5, 5)] window], low);
  [low setHidden:YES];
  touch = [UITouch qvdevice_touchAtPoint:CGPointMake(5, 5)];
  EXPECT_EQ([touch window], nil);
  EXPECT_EQ([touch view], nil);
  EXPECT_EQ([touch tapCount], 1u);
}

TEST_F(HitTesting, AnEventTellsWhichOfItsTouchesAreWhere) {
  UIWindow *const window = shownWindow();
  UIView *const inner = view(CGRectMake(10, 10, 20, 20), window);
  UITouch *const touch = [UITouch qvdevice_touchAtPoint:CGPointMake(15, 15)];
  UIEvent *const event = [UIEvent qvdevice_eventWithTouch:touch];
  EXPECT_TRUE([[event allTouches] isEqualToSet:[NSSet setWithObject:touch]]);
  EXPECT_TRUE([[event touchesForWindow:window] isEqualToSet:[NSSet setWithObject:touch]]);
  EXPECT_TRUE([[event touchesForView:inner] isEqualToSet:[NSSet setWithObject:touch]]);
  EXPECT_EQ([[event touchesForView:window] count], 0u);
  EXPECT_EQ([event timestamp], [touch timestamp]);
}

TEST_F(HitTesting, AnEventMadeWithoutTouchesHasNoneAndGoesNowhere) {
  UIEvent *const event = [[[UIEvent alloc] init] autorelease];
  EXPECT_EQ([event type], UIEventTypeTouches);
  EXPECT_EQ([[event allTouches] count], 0u);
  EXPECT_EQ([[event touchesForWindow:shownWindow()] count], 0u);
  EXPECT_GT([event timestamp], 0);
  [application sendEvent:event];
  [shownWindow() sendEvent:event];
}

} // namespace
