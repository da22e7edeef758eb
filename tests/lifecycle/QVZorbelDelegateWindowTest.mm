// The window that is kept for a host without a property for it, and the topmost view controller.
#include "DelegateTest.h"

#include <objc/runtime.h>

namespace {

NSDictionary *information = nil;
id answerInformation(id, SEL) { return information; }

/// With an Info.plist that a test can change.
class StoryboardWindow : public DelegateTest {
protected:
  void SetUp() override {
    DelegateTest::SetUp();
    window = [[[UIWindow alloc] init] autorelease];
    method_ = class_getInstanceMethod([NSBundle class], @selector(infoDictionary));
    before_ = method_setImplementation(method_, reinterpret_cast<IMP>(&answerInformation));
  }
  void TearDown() override {
    method_setImplementation(method_, before_);
    DelegateTest::TearDown();
  }

  UIWindow *window = nil;

private:
  Method method_ = nullptr;
  IMP before_ = nullptr;
};

} // namespace

TEST_F(StoryboardWindow, OfAnAppWithoutAStoryboardIsKept) {
  information = @{@"CFBundleName" : @"Notes"};
  [delegate setWindow:window];
  EXPECT_EQ([delegate window], window);
  EXPECT_EQ([delegate storyboardWindow], window);
  EXPECT_EQ(take(), Lines());
}

TEST_F(StoryboardWindow, OfAnAppWithAStoryboardIsKeptWithAWarning) {
  information = @{@"UIMainStoryboardFile" : @"Main"};
  [delegate setWindow:window];
  EXPECT_EQ(take(), Lines{"log 0 (-[QVZorbelDelegate setWindow:]) The App's Info.plist contains UIMainStoryboardFile "
                          "but the App's delegate does not declare UIApplicationDelegate.window property. App's "
                          "behavior is undefined and it may even crash."});
  EXPECT_EQ([delegate window], window);
  [delegate setWindow:nil];
  EXPECT_EQ(take().size(), 1u);
  EXPECT_EQ([delegate window], nil);
}

TEST_F(StoryboardWindow, OfAnAppWithoutAnInfoPlistIsKept) {
  information = nil;
  [delegate setWindow:window];
  EXPECT_EQ([delegate window], window);
  EXPECT_EQ(take(), Lines());
}

TEST_F(StoryboardWindow, IsTheStoryboardWindowWhoeverSetIt) {
  information = @{@"UIMainStoryboardFile" : @"Main"};
  [delegate setStoryboardWindow:window];
  EXPECT_EQ([delegate window], window);
  EXPECT_EQ(take(), Lines());
}

namespace {

class TopmostController : public DelegateTest {
protected:
  static UIViewController *topOf(UIViewController *controller) {
    return [delegateClass() getCurrentViewController:controller];
  }
  static UIViewController *plain() { return [[[UIViewController alloc] init] autorelease]; }
  static UINavigationController *navigation(NSArray *controllers) {
    UINavigationController *const made = [[[UINavigationController alloc] init] autorelease];
    [made setViewControllers:controllers];
    return made;
  }
  static void present(UIViewController *on, UIViewController *what) {
    [on presentViewController:what animated:NO completion:nil];
  }
};

} // namespace

TEST_F(TopmostController, IsTheControllerItselfWhenItPresentsNothing) {
  UIViewController *const root = plain();
  EXPECT_EQ(topOf(root), root);
  UINavigationController *const navigating = navigation(@[ plain() ]);
  EXPECT_EQ(topOf(navigating), navigating);
  EXPECT_EQ(topOf(nil), nil);
}

TEST_F(TopmostController, IsTheLastOfThoseThatArePresented) {
  UIViewController *const root = plain();
  UIViewController *const first = plain();
  UIViewController *const second = plain();
  present(root, first);
  EXPECT_EQ(topOf(root), first);
  present(first, second);
  EXPECT_EQ(topOf(root), second);
  EXPECT_EQ(topOf(first), second);
}

TEST_F(TopmostController, IsTheLastOnesOfANavigationControllerThatIsPresented) {
  UIViewController *const root = plain();
  UIViewController *const last = plain();
  present(root, navigation(@[ plain(), last ]));
  EXPECT_EQ(topOf(root), last);
}

TEST_F(TopmostController, IsTheLastOnesOfASubclassOfTheNavigationController) {
  UIViewController *const root = plain();
  UIViewController *const last = plain();
  Class const subclass = objc_allocateClassPair([UINavigationController class], "QVTestNavigationController", 0);
  objc_registerClassPair(subclass);
  UINavigationController *const navigating = [[[subclass alloc] init] autorelease];
  [navigating setViewControllers:@[ plain(), last ]];
  present(root, navigating);
  EXPECT_EQ(topOf(root), last);
}

TEST_F(TopmostController, IsWhatTheLastOnesOfANavigationControllerPresent) {
  UIViewController *const root = plain();
  UIViewController *const last = plain();
  UIViewController *const above = plain();
  present(root, navigation(@[ last ]));
  EXPECT_EQ(topOf(root), last);
  present(last, above);
  EXPECT_EQ(topOf(root), above);
}

TEST_F(TopmostController, IsNoneInANavigationControllerThatIsEmpty) {
  UIViewController *const root = plain();
  present(root, navigation(@[]));
  EXPECT_EQ(topOf(root), nil);
}
