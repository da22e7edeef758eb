// What the administrator changes while the app runs, what the app is launched with, and how both are told.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// A sanitizer's symbolizer would inherit the preloaded library, and its complaints would be the app's output.
const std::string kNoSymbolizer = "ASAN_OPTIONS=symbolize=0";

/// What the app writes by itself, one line each.
std::vector<std::string> outputOf(const Ended& ended) {
  std::vector<std::string> lines;
  for (const auto& line : objectsOf(ended.out, "output")) {
    lines.push_back(line["text"]);
  }
  return lines;
}

/// Says what the SDK's print policy is whenever a step of the app's life comes.
const std::string kAsker =
    appSource("return YES; } "
              "- (void)applicationWillResignActive:(UIApplication *)a { [self ask]; } "
              "- (void)applicationDidBecomeActive:(UIApplication *)a { [self ask]; } "
              "- (int)ask { "
              "id sdk = [NSClassFromString(@\"Zorbel\") performSelector:@selector(sharedInstance)]; "
              "printf(\"%d\\n\", [[sdk valueForKey:@\"printPolicy\"] intValue]); fflush(stdout);");

TEST(Set, changesWhatTheSdkAnswersWhileTheAppRuns) {
  const WorkFolder folder;
  const std::string policies = folder.write("policies.json", R"({"printPolicy": 1})");
  const std::string events = folder.write("events", "resign\nset printPolicy 0\nactivate\n");
  const Ended ended = qvdevice(
      {"run", "--json", "--policies", policies, "--events", events, folder.app("Asker", kAsker)}, {kNoSymbolizer});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), ElementsAre("1", "1", "0"));
}

TEST(Set, ofAnAppWithoutTheSdkFailsWithTheReason) {
  const WorkFolder folder;
  const std::string events = folder.write("events", "set printPolicy 0\n");
  const Ended ended = qvdevice({"run", "--json", "--no-library", "--events", events, NOTES_APP});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(objectsOf(ended.out, "end")[0]["sentence"],
            "Notes (line 1 of the events) refused \"set\": nothing is known by the name \"set\"");
}

TEST(Set, isReportedWithItsLineValuesAndMessage) {
  const WorkFolder folder;
  const std::string events = folder.write("events", "wait 1\nset authState 1 \"Welcome\"\n");
  const std::string app = folder.app("Outside", appSource(""));
  const auto reported = objectsOf(qvdevice({"run", "--json", "--events", events, app}).out, "event");
  ASSERT_EQ(reported.size(), 3u);
  EXPECT_EQ(reported[0].dump(), R"({"event":"wait","kind":"event","line":1,"milliseconds":1})");
  EXPECT_EQ(reported[1].dump(),
            R"({"event":"set","kind":"event","line":2,"message":"Welcome","values":{"authState":1}})");
  EXPECT_EQ(reported[2].dump(), R"({"event":"terminate","kind":"event"})");
  const std::string text = qvdevice({"run", "--events", events, app}).out;
  EXPECT_THAT(text, HasSubstr("\n  event       the administrator sets authState to 1, with the message \"Welcome\"\n"));
  EXPECT_THAT(text, Not(HasSubstr("nothing for 1 ms")));
  EXPECT_THAT(qvdevice({"run", "--verbose", "--events", events, app}).out, HasSubstr("nothing for 1 ms"));
}

const std::string kSdk = "id sdk = [NSClassFromString(@\"Zorbel\") performSelector:@selector(sharedInstance)]; ";

TEST(TextReport, showsAMessageOfTheSdkAsALineOfItsOwn) {
  const WorkFolder folder;
  const std::string app = folder.app("Outside", appSource(kSdk + "SEL display = @selector(displayMessage:); "
                                                                 "[sdk performSelector:display withObject:@\"Hello\"]; "
                                                                 "[sdk performSelector:display withObject:nil];"));
  const std::string text = qvdevice({"run", app}).out;
  EXPECT_THAT(text, HasSubstr("\n  message     Hello\n  message     (without a text)\n"));
  EXPECT_THAT(text, Not(HasSubstr("displayMessage")));
}

TEST(TextReport, showsTheUsersEventsThatTheSdkHearsOfOnlyWhenAskedForDetails) {
  const WorkFolder folder;
  const std::string app = folder.app(
      "Outside", appSource(kSdk + "[sdk performSelector:@selector(sendEvent:) withObject:[[UIEvent alloc] init]];"));
  EXPECT_THAT(qvdevice({"run", app}).out, Not(HasSubstr("sendEvent:")));
  EXPECT_THAT(qvdevice({"run", "--verbose", app}).out, HasSubstr("\n  sdk         sendEvent: (event UIEvent)\n"));
  const auto calls = objectsOf(qvdevice({"run", "--json", app}).out, "sdk");
  ASSERT_FALSE(calls.empty());
  EXPECT_EQ(calls.back()["call"], "sendEvent:");
}

/// What the device is told to launch the app with, as the app finds it.
std::vector<std::string> launchedWith(std::vector<std::string> options) {
  const WorkFolder folder;
  const std::string app = folder.app("Outside", appSource("const char *launch = getenv(\"QVDEVICE_LAUNCH\"); "
                                                          "if (launch) { puts(launch); fflush(stdout); }"));
  options.insert(options.begin(), {"run", "--json"});
  options.push_back(app);
  const Ended ended = qvdevice(options, {"QVDEVICE_LAUNCH={\"url\":\"other://\"}", kNoSymbolizer});
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  return outputOf(ended);
}

TEST(Launch, isWithAUrlAndItsSourceWhenAskedFor) {
  EXPECT_THAT(launchedWith({"--launch-url", "notes://a"}), ElementsAre(R"({"url":"notes://a"})"));
  EXPECT_THAT(launchedWith({"--launch-url", "notes://a", "--launch-source", "com.example.mail"}),
              ElementsAre(R"({"sourceApplication":"com.example.mail","url":"notes://a"})"));
}

TEST(Launch, isWithoutAUrlOtherwise) { EXPECT_THAT(launchedWith({}), IsEmpty()); }

TEST(Launch, fromASourceButWithoutAUrlIsRefused) {
  EXPECT_EQ(qvdevice({"run", "--launch-source", "com.example.mail", NOTES_APP}).status, 64);
}

} // namespace
