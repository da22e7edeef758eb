// The share sheet on release 8.2, which has all of the older private methods.
#import "SharingTest.h"

#include <algorithm>
#include <set>

namespace {

const std::string kCopy = "com.apple.UIKit.activity.CopyToPasteboard";
const std::string kPrint = "com.apple.UIKit.activity.Print";
const std::string kMail = "com.apple.UIKit.activity.Mail";

const std::string kPerform = "-[UIActivityViewController(Sandbox) sb__performActivity:]";
const std::string kPerformOfType = "-[UIActivityViewController(Sandbox) sb__performActivityOfType:]";

std::set<std::string> setOf(NSArray *strings) {
  std::set<std::string> texts;
  for (NSString *string in strings)
    EXPECT_TRUE(texts.insert([string UTF8String]).second) << "twice: " << [string UTF8String];
  return texts;
}

class Sheet : public SharingTest {
protected:
  UIActivityViewController *sheetWith(NSArray *activities) {
    return [[[UIActivityViewController alloc] initWithActivityItems:@[ letter() ]
                                              applicationActivities:activities] autorelease];
  }
  UIActivityViewController *sheet() { return sheetWith(nil); }

  Lines offered(NSArray *activities = nil) { return sharing::typesOf([sheetWith(activities) _availableActivities]); }
  Lines filtered(NSArray *activities) {
    return sharing::typesOf([sheet() arrayByFilteringBlockedActivities:activities]);
  }
  static NSMutableArray *activities(NSArray *types) {
    NSMutableArray *const made = [NSMutableArray array];
    for (id type in types)
      [made addObject:[QVOwnActivity activityOfType:type == [NSNull null] ? nil : type]];
    return made;
  }

  /// How often the activity was performed.
  int perform(id type) {
    QVOwnActivity *const activity = [QVOwnActivity activityOfType:type];
    [sheet() _performActivity:activity];
    return activity->performed;
  }
};

bool contains(const Lines &lines, const std::string &line) {
  return std::find(lines.begin(), lines.end(), line) != lines.end();
}

/// Answers the wrong kinds of arrays, as a platform may that has changed.
id answer;

} // namespace

@interface QVChangedSheet : UIActivityViewController
@end
@implementation QVChangedSheet
// By this name the library reaches the platform's method.
- (id)sb__availableActivities {
  return answer;
}
@end

TEST_F(Sheet, KeepsTheHostsExclusionsAndAddsThePoliciesAlsoWhenTheyAreSetAgain) {
  allow(1, 0, 1);
  UIActivityViewController *const shown = sheet();
  EXPECT_EQ(setOf([shown excludedActivityTypes]), (std::set<std::string>{kCopy}));
  [shown setExcludedActivityTypes:@[ @"com.example.one", UIActivityTypeMail ]];
  EXPECT_EQ(setOf([shown excludedActivityTypes]), (std::set<std::string>{kCopy, kMail, "com.example.one"}));
  sdk->printPolicy = 0;
  [shown setExcludedActivityTypes:@[ @"com.example.two" ]];
  EXPECT_EQ(setOf([shown excludedActivityTypes]), (std::set<std::string>{kCopy, kPrint, "com.example.two"}));
}

TEST_F(Sheet, TakesExclusionsThatAreGivenTwiceOnceAndNilAsNone) {
  allow(1, 0, 1);
  UIActivityViewController *const shown = sheet();
  [shown setExcludedActivityTypes:@[ @"com.example.one", @"com.example.one", UIActivityTypeCopyToPasteboard ]];
  EXPECT_EQ(setOf([shown excludedActivityTypes]), (std::set<std::string>{kCopy, "com.example.one"}));
  [shown setExcludedActivityTypes:nil];
  EXPECT_EQ(setOf([shown excludedActivityTypes]), (std::set<std::string>{kCopy}));
}

TEST_F(Sheet, LogsWhatIsExcludedWhenItIsMade) {
  allow(1, 0, 1);
  UIActivityViewController *const made = sheet();
  ASSERT_NE(made, nil);
  const std::string list = [[[made excludedActivityTypes] description] UTF8String];
  EXPECT_EQ(support::log(), (Lines{"3 Excluded activities: " + list}));
  EXPECT_NE(list.find(kCopy), std::string::npos);
}

TEST_F(Sheet, LosesCopyingAndPrintingByTheirPoliciesAndNothingElse) {
  allowAll();
  Lines all = offered();
  EXPECT_TRUE(contains(all, kCopy));
  EXPECT_TRUE(contains(all, kPrint));
  allow(1, 0, 0);
  std::erase(all, kCopy);
  std::erase(all, kPrint);
  EXPECT_EQ(offered(), all);
  EXPECT_GT(all.size(), 5U);
}

TEST_F(Sheet, UnderAWhitelistOfApplesKeepsApplesActivitiesAndLosesAnotherAppsExtension) {
  allowAll();
  useWhitelist(@[ @"com.apple." ]);
  const Lines left = offered();
  EXPECT_TRUE(contains(left, kMail));
  EXPECT_TRUE(contains(left, kCopy));
  EXPECT_TRUE(contains(left, "com.apple.mobilenotes.SharingExtension"));
  EXPECT_FALSE(contains(left, "org.other.social.post"));
  EXPECT_FALSE(contains(left, "com.example.board.pin"));
  for (const std::string &type : left)
    EXPECT_TRUE(type.starts_with("com.apple.")) << type;
}

TEST_F(Sheet, FiltersTheAppsOwnActivitiesLikeAllOthers) {
  allowAll();
  useWhitelist(@[ @"com.example." ]);
  EXPECT_EQ(offered(activities(@[ @"com.example.own", @"org.other.own" ])),
            (Lines{"com.example.board.pin", "com.example.own"}));
}

TEST_F(Sheet, JudgesOpenInActivitiesOf9And10ByTheAppAlone) {
  useWhitelist(@[ @"com.example." ]);
  EXPECT_EQ(
      filtered(activities(@[
        @"com.apple.UIKit.activity.OpenWithApp-com.example.mail",
        @"com.apple.UIKit.activity.OpenWithApp-org.other.reader",
        @"com.apple.UIKit.activity.Open.Copy.com.example.mail", @"com.apple.UIKit.activity.Open.Copy.org.other.reader",
        @"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy"
      ])),
      (Lines{"com.apple.UIKit.activity.OpenWithApp-com.example.mail",
             "com.apple.UIKit.activity.Open.Copy.com.example.mail"}));
  // Not by the prefix, which is Apple's.
  useWhitelist(@[ @"com.apple." ]);
  EXPECT_EQ(filtered(activities(@[ @"com.apple.UIKit.activity.OpenWithApp-org.other.reader" ])), Lines());
}

TEST_F(Sheet, StripsEveryOccurrenceOfThePrefixThatATypeBeginsWithAndOfNoOther) {
  const auto stripped = [&](NSString *type) {
    return std::string([[sheet() appIdentifierByStrippingIOSPart:type] UTF8String]);
  };
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.OpenWithApp-a"), "a");
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.Open.Copy.a"), "a");
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.Open.Copy.acom.apple.UIKit.activity.Open.Copy.b"), "ab");
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.OpenWithApp-acom.apple.UIKit.activity.OpenWithApp-b"), "ab");
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.Open.Copy.com.apple.UIKit.activity.OpenWithApp-a"),
            "com.apple.UIKit.activity.OpenWithApp-a");
  EXPECT_EQ(stripped(@"xcom.apple.UIKit.activity.OpenWithApp-a"), "xcom.apple.UIKit.activity.OpenWithApp-a");
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy"),
            "com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy");
  EXPECT_EQ(stripped(@"com.apple.UIKit.activity.Open.Copy."), "");
  EXPECT_EQ([sheet() appIdentifierByStrippingIOSPart:nil], nil);
}

TEST_F(Sheet, FiltersAMutableArrayInPlaceAndInItsOrder) {
  useWhitelist(@[ @"com.example." ]);
  NSMutableArray *const list =
      activities(@[ @"org.a", @"org.b", @"com.example.c", @"org.d", @"com.example.a", @"org.e" ]);
  EXPECT_EQ([sheet() arrayByFilteringBlockedActivities:list], list);
  EXPECT_EQ(sharing::typesOf(list), (Lines{"com.example.c", "com.example.a"}));
}

TEST_F(Sheet, FiltersACopyOfAnArrayThatCannotBeChanged) {
  useWhitelist(@[ @"com.example." ]);
  NSArray *const list = [NSArray arrayWithArray:activities(@[ @"org.a", @"com.example.c" ])];
  EXPECT_EQ(filtered(list), Lines{"com.example.c"});
  EXPECT_EQ([list count], 2U);
}

TEST_F(Sheet, OffersNothingOfWhatIsNoArray) {
  allowAll();
  UIActivityViewController *const changed = [[[QVChangedSheet alloc] initWithActivityItems:@[]
                                                                     applicationActivities:nil] autorelease];
  answer = @"activities";
  EXPECT_EQ([[changed _availableActivities] count], 0U);
  answer = nil;
  EXPECT_EQ([changed _availableActivities], nil);
  sdk->openInPolicy = 0;
  answer = [NSArray arrayWithArray:activities(@[ @"org.a" ])];
  EXPECT_EQ([[changed _availableActivities] count], 0U);
  answer = nil;
}

TEST_F(Sheet, OffersActivitiesWithoutATypeOnlyWhenEveryAppIsAllowed) {
  NSMutableArray * (^const odd)() = ^{
    NSMutableArray *const list = activities(@[ [NSNull null], [NSNumber numberWithInt:1] ]);
    [list addObject:[[[NSObject alloc] init] autorelease]];
    return list;
  };
  allowAll();
  EXPECT_EQ([[sheet() arrayByFilteringBlockedActivities:odd()] count], 3U);
  useWhitelist(@[ @"com.example." ]);
  EXPECT_EQ([[sheet() arrayByFilteringBlockedActivities:odd()] count], 0U);
  sdk->openInPolicy = 0;
  EXPECT_EQ([[sheet() arrayByFilteringBlockedActivities:odd()] count], 0U);
}

TEST_F(Sheet, AsksForTheExcludedTypesOnceForAllActivities) {
  allowAll();
  NSMutableArray *const list = [NSMutableArray array];
  for (int i = 0; i < 50; ++i)
    [list addObject:[QVOwnActivity activityOfType:@"com.example.own"]];
  UIActivityViewController *const shown = sheet();
  sdk->questionsAboutPrinting = 0;
  [shown arrayByFilteringBlockedActivities:list];
  EXPECT_EQ(sdk->questionsAboutPrinting, 1);
  EXPECT_EQ([list count], 50U);
}

TEST_F(Sheet, PerformsWhatIsAllowedAndSaysSo) {
  useWhitelist(@[ @"com.example." ]);
  UIActivityViewController *const shown = sheet();
  support::clearLog();
  QVOwnActivity *const activity =
      [QVOwnActivity activityOfType:@"com.apple.UIKit.activity.OpenWithApp-com.example.mail"];
  [shown _performActivity:activity];
  EXPECT_EQ(activity->performed, 1);
  EXPECT_EQ(support::log(),
            (Lines{"3 (" + kPerform + ") Performing action with activity identifier com.example.mail"}));
}

TEST_F(Sheet, DoesNotPerformWhatIsBlockedSaysSoAndTellsNobodyThatItIsDone) {
  useWhitelist(@[ @"com.example." ]);
  UIActivityViewController *const shown = sheet();
  __block int completions = 0;
  [shown setCompletionWithItemsHandler:^(UIActivityType, BOOL, NSArray *, NSError *) {
    ++completions;
  }];
  support::clearLog();
  QVOwnActivity *const activity =
      [QVOwnActivity activityOfType:@"com.apple.UIKit.activity.OpenWithApp-org.other.reader"];
  [shown _performActivity:activity];
  EXPECT_EQ(activity->performed, 0);
  EXPECT_EQ(completions, 0);
  EXPECT_EQ(support::log(), (Lines{"3 (" + kPerform + ") Blocking action with activity identifier org.other.reader"}));
}

TEST_F(Sheet, LetsTheRemoteOpenInThroughAtThisStepUnderEveryPolicy) {
  for (const NSInteger policy : {0, 1, 2, 3}) {
    sdk->openInPolicy = policy;
    EXPECT_EQ(perform(@"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy"), 1) << policy;
  }
  sdk->ready = NO;
  EXPECT_EQ(perform(@"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy"), 1);
  EXPECT_EQ(perform(@"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy2"), 0);
}

TEST_F(Sheet, PerformsAnActivityWithoutATypeOnlyWhenEveryAppIsAllowed) {
  EXPECT_EQ(perform(nil), 0);
  EXPECT_EQ(perform([NSNumber numberWithInt:1]), 0);
  [sheet() _performActivity:nil];
  allowAll();
  EXPECT_EQ(perform(nil), 1);
}

TEST_F(Sheet, PerformsByTypeWithoutStrippingIt) {
  useWhitelist(@[ @"com.example.", @"com.apple.UIKit.activity.Mail" ]);
  UIActivityViewController *const shown = sheet();
  support::clearLog();
  [shown _performActivityOfType:@"com.apple.UIKit.activity.OpenWithApp-com.example.mail"];
  EXPECT_EQ(sharing::whatLeft(), Lines());
  EXPECT_EQ(support::log(), (Lines{"3 (" + kPerformOfType + ") Blocking action with activity identifier " +
                                   "com.apple.UIKit.activity.OpenWithApp-com.example.mail"}));
  support::clearLog();
  [shown _performActivityOfType:UIActivityTypeMail];
  EXPECT_EQ(sharing::whatLeft(), (Lines{"Outbox/com.apple.UIKit.activity.Mail/letter.txt"}));
  EXPECT_EQ(support::log().at(0), "3 (" + kPerformOfType + ") Performing action with activity identifier " + kMail);
}

TEST_F(Sheet, PerformsNothingByATypeThatIsNilOrNoText) {
  UIActivityViewController *const shown = sheet();
  [shown _performActivityOfType:nil];
  [shown _performActivityOfType:[NSNumber numberWithInt:7]];
  allowAll();
  [shown _performActivityOfType:nil];
  [shown _performActivityOfType:[NSNumber numberWithInt:7]];
  EXPECT_EQ(sharing::whatLeft(), Lines());
}

TEST_F(Sheet, FollowsAPolicyThatChangesWhileItIsShown) {
  allowAll();
  UIActivityViewController *const shown = sheet();
  QVOwnActivity *const activity = [QVOwnActivity activityOfType:@"com.example.own"];
  sdk->openInPolicy = 0;
  [shown _performActivity:activity];
  EXPECT_EQ(activity->performed, 0);
  EXPECT_EQ([[shown _availableActivities] count], 0U);
}
