// How a window that covers the host's content rotates.
#include "support/Support.h"

#import <UIKit/UIKit.h>
#include <objc/runtime.h>

#include <gtest/gtest.h>

@protocol QVCover <NSObject>
- (id)initWithQVZorbelDelegate:(id)owner;
- (id)qvZorbelDelegate;
- (void)setQvZorbelDelegate:(id)owner;
- (NSUInteger)cachedSupportedInterfaceOrientations;
- (void)setCachedSupportedInterfaceOrientations:(NSUInteger)orientations;
- (BOOL)cachedShouldAutorotate;
- (void)setCachedShouldAutorotate:(BOOL)autorotates;
@end

namespace {

UIUserInterfaceIdiom idiom;
UIUserInterfaceIdiom deviceIdiom(id, SEL) { return idiom; }
BOOL answersNothing(id, SEL, SEL) { return NO; }

class Cover : public testing::Test {
protected:
  void SetUp() override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool_ drain]; }

  static UIViewController<QVCover> *make(id owner) {
    Class const cls = NSClassFromString(@"HiddenApplicationContentViewController");
    return [[(UIViewController<QVCover> *)[cls alloc] initWithQVZorbelDelegate:owner] autorelease];
  }

  static void holdIn(UIUserInterfaceIdiom device) {
    idiom = device;
    method_setImplementation(class_getInstanceMethod([UIDevice class], @selector(userInterfaceIdiom)),
                             reinterpret_cast<IMP>(&deviceIdiom));
  }

private:
  NSAutoreleasePool *pool_ = nil;
};

} // namespace

TEST_F(Cover, IsAViewControllerThatAddsNothingToItsView) {
  UIViewController *const cover = make(nil);
  EXPECT_TRUE([cover isKindOfClass:[UIViewController class]]);
  EXPECT_EQ([cover superclass], [UIViewController class]);
  EXPECT_EQ([[cover view] class], [UIView class]);
  EXPECT_EQ([[[cover view] subviews] count], 0u);
}

TEST_F(Cover, ThatIsFreshDoesNotRotate) {
  UIViewController<QVCover> *const cover = make(nil);
  EXPECT_EQ([cover shouldAutorotate], NO);
  EXPECT_EQ([cover cachedShouldAutorotate], NO);
  EXPECT_EQ([cover cachedSupportedInterfaceOrientations], 0u);
}

TEST_F(Cover, RotatesAsItWasTold) {
  UIViewController<QVCover> *const cover = make(nil);
  for (const BOOL rotates : {YES, NO}) {
    [cover setCachedShouldAutorotate:rotates];
    EXPECT_EQ([cover shouldAutorotate], rotates);
    EXPECT_EQ([cover cachedShouldAutorotate], rotates);
  }
}

TEST_F(Cover, AnswersAllOrientationsOnAPadAndPortraitOnAPhone) {
  UIViewController<QVCover> *const cover = make(nil);
  holdIn(UIUserInterfaceIdiomPad);
  EXPECT_EQ([cover supportedInterfaceOrientations], 30u);
  holdIn(UIUserInterfaceIdiomPhone);
  EXPECT_EQ([cover supportedInterfaceOrientations], 2u);
}

TEST_F(Cover, AnswersPortraitOnADeviceOfAnotherKindOrOfNone) {
  UIViewController<QVCover> *const cover = make(nil);
  holdIn(static_cast<UIUserInterfaceIdiom>(2));
  EXPECT_EQ([cover supportedInterfaceOrientations], 2u);
  holdIn(UIUserInterfaceIdiomPad);
  class_addMethod([UIDevice class], @selector(respondsToSelector:), reinterpret_cast<IMP>(&answersNothing),
                  "C24@0:8:16");
  EXPECT_EQ([cover supportedInterfaceOrientations], 2u);
}

TEST_F(Cover, AnswersTheOrientationsThatItWasToldWhateverTheDevice) {
  UIViewController<QVCover> *const cover = make(nil);
  for (const UIUserInterfaceIdiom device : {UIUserInterfaceIdiomPad, UIUserInterfaceIdiomPhone}) {
    holdIn(device);
    for (const NSUInteger mask : {NSUInteger(1), NSUInteger(2), NSUInteger(24), NSUInteger(1) << 40, ~NSUInteger(0)}) {
      [cover setCachedSupportedInterfaceOrientations:mask];
      EXPECT_EQ([cover supportedInterfaceOrientations], mask);
      EXPECT_EQ([cover cachedSupportedInterfaceOrientations], mask);
    }
  }
  [cover setCachedSupportedInterfaceOrientations:0];
  EXPECT_EQ([cover supportedInterfaceOrientations], 2u);
}

TEST_F(Cover, KnowsItsOwnerAndForgetsItOnceItIsReleased) {
  NSObject *const owner = [[NSObject alloc] init];
  UIViewController<QVCover> *const cover = make(owner);
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  EXPECT_EQ([cover qvZorbelDelegate], owner);
  [pool drain];
  EXPECT_EQ([owner retainCount], 1u);
  [owner release];
  EXPECT_EQ([cover qvZorbelDelegate], nil);
}

TEST_F(Cover, CanBeGivenAnotherOwner) {
  NSObject *const first = [[[NSObject alloc] init] autorelease];
  NSObject *const second = [[[NSObject alloc] init] autorelease];
  UIViewController<QVCover> *const cover = make(first);
  [cover setQvZorbelDelegate:second];
  EXPECT_EQ([cover qvZorbelDelegate], second);
  [cover setQvZorbelDelegate:nil];
  EXPECT_EQ([cover qvZorbelDelegate], nil);
}
