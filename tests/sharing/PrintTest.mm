// Whether printing is available.
#import "SharingTest.h"

namespace {
BOOL platformPrints;
} // namespace

/// A platform with or without a printing service: by this name the library reaches the platform's method.
@interface QVPrinting : UIPrintInteractionController
@end
@implementation QVPrinting
+ (BOOL)sb_isPrintingAvailable {
  return platformPrints;
}
@end

class Printing : public SharingTest {};

TEST_F(Printing, IsNotAvailableWithoutAPlatformServiceAndNobodyIsAsked) {
  allowAll();
  platformPrints = NO;
  sdk->questions = 0;
  EXPECT_FALSE([QVPrinting isPrintingAvailable]);
  EXPECT_EQ(sdk->questions, 0);
  EXPECT_EQ(sdk->questionsAboutPrinting, 0);
}

TEST_F(Printing, IsNotAvailableWhenThePolicyDoesNotAllowIt) {
  platformPrints = YES;
  for (const NSInteger policy : {0, 2, -1}) {
    allow(1, 1, policy);
    EXPECT_FALSE([QVPrinting isPrintingAvailable]) << policy;
    EXPECT_FALSE([UIPrintInteractionController isPrintingAvailable]) << policy;
  }
}

TEST_F(Printing, IsAvailableWhenBothAllowIt) {
  platformPrints = YES;
  allowAll();
  EXPECT_TRUE([QVPrinting isPrintingAvailable]);
  EXPECT_TRUE([UIPrintInteractionController isPrintingAvailable]);
}

TEST_F(Printing, IsNotAvailableWithoutAnSDKThatIsReady) {
  allowAll();
  sdk->ready = NO;
  EXPECT_FALSE([UIPrintInteractionController isPrintingAvailable]);
  [[NSClassFromString(@"ZorbelUtil") instance] setZorbel:nil];
  EXPECT_FALSE([UIPrintInteractionController isPrintingAvailable]);
}

TEST_F(Printing, IsAskedAnewEachTimeAndNothingIsLogged) {
  allowAll();
  EXPECT_TRUE([UIPrintInteractionController isPrintingAvailable]);
  sdk->printPolicy = 0;
  EXPECT_FALSE([UIPrintInteractionController isPrintingAvailable]);
  sdk->printPolicy = 1;
  EXPECT_TRUE([UIPrintInteractionController isPrintingAvailable]);
  EXPECT_EQ(support::log(), Lines());
}

TEST_F(Printing, LeavesPaperOnlyWhileItIsAllowed) {
  UIPrintInteractionController *const printer = [UIPrintInteractionController sharedPrintController];
  [printer setPrintingItem:letter()];
  EXPECT_FALSE([printer presentAnimated:NO completionHandler:nil]);
  EXPECT_EQ(sharing::whatLeft(), Lines());
  allowAll();
  EXPECT_TRUE([printer presentAnimated:NO completionHandler:nil]);
  EXPECT_EQ(sharing::whatLeft(), (Lines{"Print/letter.txt"}));
}
