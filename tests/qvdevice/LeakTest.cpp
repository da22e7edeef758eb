// What an app leaves on the device's pasteboard for the next one, under each policy.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;

constexpr const char* kUnauthorized = R"({"ready": true, "authState": 1, "managedPolicy": 2, "pasteboardPolicy": 0,
                                          "zbPasteboardTypePrefixes": ["com.example.sdk."]})";

/// An app that does this a moment after it has become active.
std::string sourceOf(const std::string& work) {
  return appSource(R"(
    dispatch_async(dispatch_get_main_queue(), ^{
      UIPasteboard *pasteboard = [UIPasteboard generalPasteboard];
      )" + work + "\n    });");
}

class Leak : public testing::Test {
protected:
  void run(const std::string& app, const std::string& policies, const std::string& events = "") const {
    std::vector<std::string> arguments{"run", "--device", device, "--policies",
                                       folder.write("policies.json", policies)};
    if (!events.empty()) {
      arguments.insert(arguments.end(), {"--events", folder.write("events", events)});
    }
    arguments.push_back(app);
    const Ended ended = qvdevice(arguments);
    EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  }

  /// Without the library, as an app of somebody else.
  void runOutside(const std::string& app) const {
    const Ended ended = qvdevice({"run", "--device", device, "--no-library", app});
    EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  }

  /// What another app sees afterwards.
  std::vector<std::string> seen() const {
    const Ended reader = qvdevice({"run", "--json", "--device", device, "--no-library", READER_APP});
    EXPECT_EQ(reader.status, 0) << reader.out << reader.err;
    std::vector<std::string> all;
    for (const auto& line : objectsOf(reader.out, "output")) {
      const std::string text = line["text"];
      const std::string mark = "Reader sees ";
      if (const auto start = text.find(mark); start != std::string::npos) {
        all.push_back(text.substr(start + mark.size()));
      }
    }
    return all;
  }

  void expectTheSecret() const {
    EXPECT_THAT(seen(), ElementsAre("com.example.leaker.note: {confidential = yes; }",
                                    "public.utf8-plain-text: The merger is off",
                                    "public.url: https://intranet.example.com/merger"));
  }

  const WorkFolder folder;
  const std::string device = folder.path() / "device";
};

TEST_F(Leak, isClosedUnderPolicyZero) {
  run(LEAKER_APP, kUnauthorized);
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

TEST_F(Leak, isLeftOpenUnderPoliciesOneAndTwo) {
  for (const char* policy : {"1", "2"}) {
    run(LEAKER_APP, std::string(R"({"ready": true, "authState": 1, "pasteboardPolicy": )") + policy + "}");
    expectTheSecret();
  }
}

TEST_F(Leak, isClosedAsLongAsTheSDKIsNotReady) {
  run(LEAKER_APP, R"({"ready": false, "authState": 1, "pasteboardPolicy": 1})");
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

TEST_F(Leak, isClosedWhenTheAppIsOnlyPutAway) {
  run(LEAKER_APP, kUnauthorized, "wait 300\nresign\nterminate\n");
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

TEST_F(Leak, isClosedWhenTheAppIsEndedWhileItIsActive) {
  run(LEAKER_APP, kUnauthorized, "wait 300\nterminate\n");
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

TEST_F(Leak, isClosedOrLeftOpenByThePolicyOfTheMoment) {
  run(LEAKER_APP, R"({"ready": true, "authState": 1, "pasteboardPolicy": 1})",
      "wait 300\nset pasteboardPolicy 0\nresign\nterminate\n");
  EXPECT_THAT(seen(), ElementsAre("nothing"));
  run(LEAKER_APP, kUnauthorized, "wait 300\nset pasteboardPolicy 2\nresign\nterminate\n");
  expectTheSecret();
}

TEST_F(Leak, isClosedEachTimeThatTheAppIsUsed) {
  run(LEAKER_APP, kUnauthorized, "background\nforeground\nwait 300\nbackground\nforeground\nwait 300\nterminate\n");
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

TEST_F(Leak, leavesInItsPlaceWhatAnotherAppHadCopied) {
  runOutside(folder.app("Other", sourceOf(R"([pasteboard setString:@"of another app"];)")));
  run(LEAKER_APP, kUnauthorized);
  EXPECT_THAT(seen(), ElementsAre("public.utf8-plain-text: of another app"));
}

TEST_F(Leak, sparesTheSDKsOwnItems) {
  run(folder.app("Signing", sourceOf(R"(
      [pasteboard setItems:@[ @{@"public.utf8-plain-text" : @"secret"}, @{@"com.example.sdk.item" : @"the SDK's"} ]];)")),
      kUnauthorized);
  EXPECT_THAT(seen(), ElementsAre("com.example.sdk.item: the SDK's"));
  // The next app has replaced them, and that is not undone.
  run(LEAKER_APP, kUnauthorized);
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

TEST_F(Leak, isNotFilledWithWhatWasThereBeforeSomebodyEmptiedThePasteboard) {
  runOutside(folder.app("Other", sourceOf(R"([pasteboard setString:@"of another app"];)")));
  run(folder.app("Emptying", sourceOf(R"(
      dispatch_after(dispatch_time(DISPATCH_TIME_NOW, 200 * NSEC_PER_MSEC), dispatch_get_main_queue(), ^{
        [pasteboard setItems:@[]];
        [pasteboard setString:@"secret"];
      });)")),
      kUnauthorized);
  EXPECT_THAT(seen(), ElementsAre("nothing"));
}

} // namespace
