// URLs that the system hands to the app, and those that the app hands to the system.
#include "Lifecycle.h"

namespace {

const char *const kReplacement = "-[ZBWrappedApplicationDelegate zb_application:openURL:options:]";

class OpenURL : public Lifecycle {
protected:
  void SetUp() override {
    Lifecycle::SetUp();
    url = [NSURL URLWithString:@"example:thing"];
    options = @{
      UIApplicationLaunchOptionsSourceApplicationKey : @"com.example.mail",
      UIApplicationLaunchOptionsAnnotationKey : @"a note"
    };
  }
  BOOL open(id delegate, NSDictionary *given) { return [delegate application:application openURL:url options:given]; }
  NSURL *url = nil;
  NSDictionary *options = nil;
};

} // namespace

TEST_F(OpenURL, ReachesTheHostsNewestMethodAndReturnsItsAnswer) {
  QVFullHost *const host = make<QVFullHost>();
  setDelegate(host);
  for (const BOOL answer : {YES, NO}) {
    host->answer = answer;
    EXPECT_EQ(open(host, options), answer);
  }
  const std::string once = "application:openURL:options: example:thing "
                           "UIApplicationLaunchOptionsAnnotationKey,UIApplicationLaunchOptionsSourceApplicationKey";
  EXPECT_EQ(heard(), (Lines{once, once}));
}

TEST_F(OpenURL, IsLoggedWithSourceURLAndOptions) {
  QVEmptyHost *const host = make<QVEmptyHost>();
  setDelegate(host);
  open(host, options);
  EXPECT_EQ(support::log(), (Lines{std::string("3 ") + kReplacement, std::string("5 ") + kReplacement +
                                                                         " from com.example.mail (example:thing) (" +
                                                                         shown(options) + ")"}));
}

TEST_F(OpenURL, WithoutOptionsIsLoggedAndDelivered) {
  QVOlderURLHost *const host = make<QVOlderURLHost>();
  setDelegate(host);
  EXPECT_EQ(open(host, nil), NO);
  EXPECT_EQ(support::log(5), (Lines{std::string("5 ") + kReplacement + " from (null) (example:thing) ((null))"}));
  ASSERT_EQ(heard().size(), 1u);
  EXPECT_EQ(heard()[0].find("application:openURL:sourceApplication:annotation: example:thing"), 0u) << heard()[0];
}

TEST_F(OpenURL, ReachesAnOlderHostWithSourceAndAnnotationTakenFromTheOptions) {
  QVOlderURLHost *const host = make<QVOlderURLHost>();
  setDelegate(host);
  EXPECT_EQ(open(host, options), NO);
  EXPECT_EQ(heard(),
            (Lines{"application:openURL:sourceApplication:annotation: example:thing com.example.mail a note"}));
}

TEST_F(OpenURL, ReachesAHostThatHasOnlyTheOldestMethod) {
  QVOldestURLHost *const host = make<QVOldestURLHost>();
  setDelegate(host);
  EXPECT_EQ(open(host, options), NO);
  EXPECT_EQ(heard(), (Lines{"application:handleOpenURL: example:thing"}));
}

TEST_F(OpenURL, IsAnsweredYESForAHostWithNoneOfTheThree) {
  QVEmptyHost *const host = make<QVEmptyHost>();
  setDelegate(host);
  EXPECT_TRUE([host respondsToSelector:@selector(application:openURL:options:)]);
  EXPECT_EQ(open(host, options), YES);
  EXPECT_EQ(heard(), Lines{});
}

TEST_F(OpenURL, OfAHostThatRaisesLetsTheExceptionGoOn) {
  QVRaisingHost *const host = make<QVRaisingHost>();
  setDelegate(host);
  EXPECT_EQ(raisedBy([&] { open(host, options); }), [QVRaisingHost trouble]);
}

TEST_F(OpenURL, OfTheAppsOwnIsLoggedAndThePlatformsAnswerReturned) {
  EXPECT_EQ([application openURL:[NSURL URLWithString:@"https://example.com/a"]], YES);
  EXPECT_EQ([application openURL:[NSURL fileURLWithPath:@"/a"]], NO);
  EXPECT_EQ([application openURL:nil], NO);
  const std::string line = "3 -[UIApplication(Sandbox) sb_openURL:]";
  EXPECT_EQ(support::log(),
            (Lines{line, "5 URL: https://example.com/a", line, "5 URL: file:///a", line, "5 URL: (null)"}));
}
