// The share-extension service on release 11: it asks before it hands data on, and the app it names is judged then.
#import "SharingTest.h"

namespace {

const std::string kWill = "-[UIActivityViewController(Sandbox) "
                          "sb_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismiss:completion:]";
const std::string kRequest =
    "-[UIActivityViewController(Sandbox) "
    "sb_shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:]";
NSString *const kRemote = @"com.apple.UIKit.activity.RemoteOpenInApplication-ByCopy";

class Service : public SharingTest {
protected:
  void SetUp() override {
    SharingTest::SetUp();
    useWhitelist(@[ @"com.example." ]);
    sheet = [[UIActivityViewController alloc] initWithActivityItems:@[ letter() ] applicationActivities:nil];
    [sharing::presenter() presentViewController:sheet animated:NO completion:nil];
    support::clearLog();
  }
  void TearDown() override {
    [sharing::presenter() dismissViewControllerAnimated:NO completion:nil];
    [sheet release];
    SharingTest::TearDown();
  }

  static id request(id type, id metadata) {
    NSMutableDictionary *const values = [NSMutableDictionary dictionary];
    if (type) [values setObject:type forKey:@"activityType"];
    if (metadata) [values setObject:metadata forKey:@"activitySpecificMetadata"];
    return values;
  }
  /// How often the completion was called.
  int will(id request, BOOL dismiss = NO) {
    __block int calls = 0;
    [sheet shareExtensionServiceWillPerformInServiceActivityWithDataRequest:request dismissPresentation:dismiss
                                                                 completion:^(id) {
                                                                   ++calls;
                                                                 }];
    return calls;
  }
  void ask(NSString *identifier) {
    [sheet shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:identifier];
  }
  bool isShown() { return [sheet presentingViewController] != nil; }
  void expectRestricted(const std::string &app) {
    EXPECT_EQ(support::log(), (Lines{"0 " + kWill + ": Restrict open in with app " + app}));
    EXPECT_FALSE(isShown());
  }

  UIActivityViewController *sheet = nil;
};

} // namespace

TEST_F(Service, IsJudgedByTheAppInTheMetadataWhenAnotherAppShallOpen) {
  EXPECT_EQ(will(request(kRemote, @{@"applicationIdentifier" : @"com.example.mail"})), 1);
  EXPECT_EQ(support::log(), (Lines{"5 " + kWill + ": Allow open in with app com.example.mail"}));
  EXPECT_TRUE(isShown());
}

TEST_F(Service, ThatIsRestrictedDismissesTheSheetAndDoesNotCallTheCompletion) {
  EXPECT_EQ(will(request(kRemote, @{@"applicationIdentifier" : @"org.other.reader"})), 0);
  expectRestricted("org.other.reader");
}

TEST_F(Service, IsPassedTheDismissFlagUnchanged) {
  EXPECT_EQ(will(request(kRemote, @{@"applicationIdentifier" : @"com.example.mail"}), YES), 1);
  EXPECT_FALSE(isShown());
}

TEST_F(Service, IsJudgedByThePrefixAndNotByTheWholeTypeOfTheRemoteOpenIn) {
  EXPECT_EQ(will(request(@"com.apple.UIKit.activity.RemoteOpenInApplication-",
                         @{@"applicationIdentifier" : @"com.example.mail"})),
            1);
  EXPECT_EQ(will(request(@"com.apple.UIKit.activity.RemoteOpenInApplication",
                         @{@"applicationIdentifier" : @"com.example.mail"})),
            0);
}

TEST_F(Service, IsJudgedByTheTypeItselfForAnyOtherActivity) {
  EXPECT_EQ(will(request(@"com.example.board.pin", @{@"applicationIdentifier" : @"org.other.reader"})), 1);
  support::clearLog();
  EXPECT_EQ(will(request(@"org.other.social.post", @{@"applicationIdentifier" : @"com.example.mail"})), 0);
  expectRestricted("org.other.social.post");
}

TEST_F(Service, IsRestrictedWithoutTheKeysOfARequest) {
  EXPECT_EQ(will(@{}), 0);
  expectRestricted("(null)");
}

TEST_F(Service, IsRestrictedWhenTheRequestKnowsNoSuchKeys) {
  EXPECT_EQ(will([[[NSObject alloc] init] autorelease]), 0);
  expectRestricted("(null)");
}

TEST_F(Service, IsRestrictedWithoutARequest) {
  EXPECT_EQ(will(nil), 0);
  expectRestricted("(null)");
}

TEST_F(Service, IsRestrictedWithoutMetadata) {
  EXPECT_EQ(will(request(kRemote, nil)), 0);
  expectRestricted("(null)");
}

TEST_F(Service, IsRestrictedByMetadataAndTypesOfAnotherKind) {
  EXPECT_EQ(will(request(kRemote, @"com.example.mail")), 0);
  EXPECT_EQ(will(request(kRemote, @[ @"com.example.mail" ])), 0);
  EXPECT_EQ(will(request(kRemote, @{@"applicationIdentifier" : @[ @"com.example.mail" ]})), 0);
  EXPECT_EQ(will(request(kRemote, @{@"applicationIdentifier" : [NSNull null]})), 0);
  EXPECT_EQ(will(request([NSNumber numberWithInt:3], @{@"applicationIdentifier" : @"com.example.mail"})), 0);
}

TEST_F(Service, IsAllowedWithoutAnyAppWhenEveryAppIsAllowed) {
  allowAll();
  EXPECT_EQ(will(request(kRemote, nil)), 1);
  EXPECT_EQ(support::log(), (Lines{"5 " + kWill + ": Allow open in with app (null)"}));
}

TEST_F(Service, ThatAsksTheHostToPerformIsJudgedByTheBundleIdentifier) {
  ask(@"com.example.board.pin");
  EXPECT_EQ(sharing::whatLeft(), (Lines{"Apps/com.example.board/Documents/Inbox/letter.txt"}));
  EXPECT_EQ(support::log().at(0), "5 " + kRequest + ": Allow open in with app com.example.board.pin");
}

TEST_F(Service, ThatAsksTheHostForAnotherAppIsRestrictedAndTheSheetDismissed) {
  ask(@"org.other.social.post");
  EXPECT_EQ(sharing::whatLeft(), Lines());
  EXPECT_EQ(support::log(), (Lines{"0 " + kRequest + ": Restrict open in with app org.other.social.post"}));
  EXPECT_FALSE(isShown());
}

TEST_F(Service, DoesNotStripTheBundleIdentifier) {
  ask(@"com.apple.UIKit.activity.Open.Copy.com.example.board.pin");
  EXPECT_EQ(support::log(), (Lines{"0 " + kRequest +
                                   ": Restrict open in with app "
                                   "com.apple.UIKit.activity.Open.Copy.com.example.board.pin"}));
}

TEST_F(Service, IsRestrictedWithoutABundleIdentifierUnlessEveryAppIsAllowed) {
  ask(nil);
  EXPECT_EQ(support::log(), (Lines{"0 " + kRequest + ": Restrict open in with app (null)"}));
  support::clearLog();
  allowAll();
  ask(nil);
  EXPECT_EQ(support::log(), (Lines{"5 " + kRequest + ": Allow open in with app (null)"}));
}

TEST_F(Service, RestrictsEverythingAsLongAsTheSDKIsNotReady) {
  allowAll();
  sdk->ready = NO;
  EXPECT_EQ(will(request(kRemote, @{@"applicationIdentifier" : @"com.example.mail"})), 0);
  expectRestricted("com.example.mail");
}
