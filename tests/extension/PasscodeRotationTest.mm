// How the extension window lets the device be held.
#include "PasscodeWindow.h"

#include <cstdint>
#include <objc/runtime.h>

namespace {

class PasscodeRotation : public PasscodeWindow {
protected:
  BOOL rotatesTo(NSInteger orientation) {
    return [controller shouldAutorotateToInterfaceOrientation:static_cast<UIInterfaceOrientation>(orientation)];
  }
};

BOOL answersNothing(id, SEL, SEL) { return NO; }

} // namespace

TEST_F(PasscodeRotation, IsAllowedAsTheAppsOwnControllerHasIt) {
  for (const BOOL rotates : {YES, NO}) {
    [manager() setShouldAutorotate:rotates];
    EXPECT_EQ([controller shouldAutorotate], rotates);
  }
}

TEST_F(PasscodeRotation, WithoutACopiedMaskIsPortraitOnAPhoneAndAllWaysOnAPad) {
  [manager() setSupportedInterfaceOrientations:0];
  EXPECT_EQ([controller supportedInterfaceOrientations], 2u);
  setDevice(UIUserInterfaceIdiomPad);
  EXPECT_EQ([controller supportedInterfaceOrientations], 30u);
  setDevice(static_cast<UIUserInterfaceIdiom>(2));
  EXPECT_EQ([controller supportedInterfaceOrientations], 2u);
}

TEST_F(PasscodeRotation, WithACopiedMaskFollowsItOnEveryDevice) {
  for (const UIUserInterfaceIdiom device : {UIUserInterfaceIdiomPhone, UIUserInterfaceIdiomPad}) {
    setDevice(device);
    for (const NSUInteger mask : {NSUInteger(2), NSUInteger(24), NSUInteger(1), NSUInteger(1) << 40}) {
      [manager() setSupportedInterfaceOrientations:mask];
      EXPECT_EQ([controller supportedInterfaceOrientations], mask);
    }
  }
}

TEST_F(PasscodeRotation, ToAnOrientationIsOnlyToPortraitOnAPhoneAndToAllOnAPad) {
  for (const NSInteger orientation : {0L, 1L, 2L, 3L, 4L})
    EXPECT_EQ(rotatesTo(orientation), orientation == 1) << orientation;
  setDevice(UIUserInterfaceIdiomPad);
  for (const NSInteger orientation : {0L, 1L, 2L, 3L, 4L})
    EXPECT_EQ(rotatesTo(orientation), YES) << orientation;
}

TEST_F(PasscodeRotation, ToAnOrientationInTheMaskIsAllowedAndToAnotherAsWithoutOne) {
  [manager() setAutoRotateToInterfaceOrientations:1 << 3];
  EXPECT_EQ(rotatesTo(3), YES);
  EXPECT_EQ(rotatesTo(4), NO);
  EXPECT_EQ(rotatesTo(1), YES);
  EXPECT_EQ(rotatesTo(2), NO);
}

TEST_F(PasscodeRotation, ToAnOrientationThatIsNoneIsAnsweredToo) {
  [manager() setAutoRotateToInterfaceOrientations:~NSUInteger(0)];
  EXPECT_EQ(rotatesTo(63), YES);
  for (const NSInteger orientation : {-1L, 64L, 65L, INTPTR_MIN, INTPTR_MAX})
    EXPECT_EQ(rotatesTo(orientation), NO) << orientation;
}

TEST_F(PasscodeRotation, OnADeviceThatDoesNotKnowItsKindIsThatOfAPhone) {
  setDevice(UIUserInterfaceIdiomPad);
  class_addMethod([UIDevice class], @selector(respondsToSelector:), reinterpret_cast<IMP>(&answersNothing),
                  "C24@0:8:16");
  EXPECT_EQ([controller supportedInterfaceOrientations], 2u);
  EXPECT_EQ(rotatesTo(2), NO);
}
