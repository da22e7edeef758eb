// What a share sheet may not offer.
#include "Policy.h"

namespace {

const std::string kCopy = "com.apple.UIKit.activity.CopyToPasteboard";
const std::string kPrint = "com.apple.UIKit.activity.Print";

// Every way out of the app that the open-in policy is asked about.
const std::set<std::string> kTargets = {
    "com.apple.UIKit.activity.PostToFacebook",
    "com.apple.UIKit.activity.PostToTwitter",
    "com.apple.UIKit.activity.PostToWeibo",
    "com.apple.UIKit.activity.Message",
    "com.apple.UIKit.activity.Mail",
    kPrint,
    kCopy,
    "com.apple.UIKit.activity.AssignToContact",
    "com.apple.UIKit.activity.SaveToCameraRoll",
    "com.apple.UIKit.activity.AddToReadingList",
    "com.apple.UIKit.activity.PostToFlickr",
    "com.apple.UIKit.activity.PostToVimeo",
    "com.apple.UIKit.activity.TencentWeibo",
    "com.apple.UIKit.activity.AirDrop",
    "com.apple.UIKit.activity.Quicklook",
    "com.apple.mobilenotes",
    "com.apple.mobilenotes.SharingExtension",
    "com.apple.mobileslideshow.StreamShareService",
};

std::set<std::string> targetsWithout(const std::set<std::string> &allowed) {
  std::set<std::string> rest = kTargets;
  for (const std::string &target : allowed)
    EXPECT_EQ(rest.erase(target), 1u) << target;
  return rest;
}

/// Under policies that exclude nothing.
class Excluded : public Policy {
protected:
  void SetUp() override {
    Policy::SetUp();
    ASSERT_EQ(kTargets.size(), 18u);
    sdk->pasteboardPolicy = 1;
    sdk->printPolicy = 1;
    sdk->openInPolicy = 1;
  }

  void use(id whitelist) {
    sdk->openInPolicy = 2;
    [sdk->openInWhitelist release];
    sdk->openInWhitelist = [whitelist retain];
  }
  std::set<std::string> merged(NSArray *types) { return setOf([util mergeExcludedActivityTypes:types]); }
};

using Texts = std::set<std::string>;

} // namespace

TEST_F(Excluded, IsNothingWhenEverythingIsAllowed) {
  EXPECT_EQ(merged(nil), Texts());
  EXPECT_NE([util mergeExcludedActivityTypes:nil], nil);
  EXPECT_EQ(merged(@[]), Texts());
}

TEST_F(Excluded, IsCopyingUnderPasteboardPolicyZero) {
  sdk->pasteboardPolicy = 0;
  EXPECT_EQ(merged(nil), Texts{kCopy});
}

TEST_F(Excluded, IsNotCopyingUnderSecureCopy) {
  sdk->pasteboardPolicy = 2;
  EXPECT_EQ(merged(nil), Texts());
}

TEST_F(Excluded, IsPrintingUnderPrintPolicyZeroAndUnknownOnes) {
  sdk->printPolicy = 0;
  EXPECT_EQ(merged(nil), Texts{kPrint});
  sdk->printPolicy = 2;
  EXPECT_EQ(merged(nil), Texts{kPrint});
}

TEST_F(Excluded, AreCopyingAndPrintingTogether) {
  sdk->pasteboardPolicy = 3;
  sdk->printPolicy = -1;
  EXPECT_EQ(merged(nil), (Texts{kCopy, kPrint}));
}

TEST_F(Excluded, IsEveryTargetUnderOpenInPolicyZeroAndUnknownOnes) {
  sdk->openInPolicy = 0;
  EXPECT_EQ(merged(nil), kTargets);
  sdk->openInPolicy = 3;
  EXPECT_EQ(merged(nil), kTargets);
  // Not even a whitelist with all of them changes that.
  sdk->openInWhitelist = [@[ @"com.apple" ] retain];
  EXPECT_EQ(merged(nil), kTargets);
}

TEST_F(Excluded, IsEveryTargetBeforeThereIsAnSDK) {
  [util setZorbel:nil];
  EXPECT_EQ(merged(nil), kTargets);
}

TEST_F(Excluded, IsEveryTargetAsLongAsTheSDKIsNotReady) {
  sdk->ready = NO;
  EXPECT_EQ(merged(nil), kTargets);
}

TEST_F(Excluded, IsEveryTargetOnceTheSDKHasBeenReleased) {
  releaseSDK();
  EXPECT_EQ(merged(nil), kTargets);
}

TEST_F(Excluded, IsEveryTargetThatTheWhitelistDoesNotMatch) {
  use(@[ @"com.apple.UIKit.activity.Mail", @"com.apple.mobilenotes" ]);
  EXPECT_EQ(merged(nil), targetsWithout({"com.apple.UIKit.activity.Mail", "com.apple.mobilenotes",
                                         "com.apple.mobilenotes.SharingExtension"}));
}

TEST_F(Excluded, IsEveryTargetWithoutAWhitelistOrWithAnEmptyOne) {
  use(nil);
  EXPECT_EQ(merged(nil), kTargets);
  use(@[]);
  EXPECT_EQ(merged(nil), kTargets);
}

TEST_F(Excluded, IsEveryTargetUnderAWhitelistOfAnEmptyString) {
  use(@[ @"" ]);
  EXPECT_EQ(merged(nil), kTargets);
}

TEST_F(Excluded, IsNoTargetUnderAWhitelistThatMatchesThemAll) {
  use(@[ @"com.apple." ]);
  EXPECT_EQ(merged(nil), Texts());
}

TEST_F(Excluded, AreCopyingAndPrintingByTheirOwnPoliciesAlsoWhenTheWhitelistMatchesThem) {
  use(@[ @"com.apple." ]);
  sdk->pasteboardPolicy = 0;
  sdk->printPolicy = 0;
  EXPECT_EQ(merged(nil), (Texts{kCopy, kPrint}));
}

TEST_F(Excluded, AreCopyingAndPrintingByTheOpenInPolicyAlsoWhenTheirOwnAllowThem) {
  use(@[ @"com.apple.mobile" ]);
  EXPECT_EQ(merged(nil), targetsWithout({"com.apple.mobilenotes", "com.apple.mobilenotes.SharingExtension",
                                         "com.apple.mobileslideshow.StreamShareService"}));
}

TEST_F(Excluded, KeepsWhatItIsGivenAlsoWhenThePoliciesAllowIt) {
  EXPECT_EQ(merged(@[ @"com.apple.UIKit.activity.Mail", @"com.example.own" ]),
            (Texts{"com.apple.UIKit.activity.Mail", "com.example.own"}));
  use(@[ @"com.apple." ]);
  EXPECT_EQ(merged(@[ @"com.apple.UIKit.activity.Mail" ]), (Texts{"com.apple.UIKit.activity.Mail"}));
}

TEST_F(Excluded, HoldsWhatItIsGivenOnlyOnce) {
  sdk->openInPolicy = 0;
  Texts expected = kTargets;
  expected.insert("com.example.own");
  EXPECT_EQ(merged(@[
              @"com.example.own", @"com.example.own", @"com.apple.UIKit.activity.Mail",
              [NSMutableString stringWithString:@"com.apple.UIKit.activity.Print"]
            ]),
            expected);
}

TEST_F(Excluded, IsANewArrayAndLeavesTheGivenOneAlone) {
  sdk->openInPolicy = 0;
  NSMutableArray *const given = [NSMutableArray arrayWithObject:@"com.example.own"];
  NSArray *const first = [util mergeExcludedActivityTypes:given];
  EXPECT_NE(first, given);
  EXPECT_EQ([given count], 1u);
  EXPECT_EQ([first count], 19u);
  EXPECT_NE([util mergeExcludedActivityTypes:given], first);
}
