// The published list and what becomes of it when it does not fit what processes tell.
#include "HookList.h"
#include "HookReasons.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace qvdevice;
using Json = nlohmann::ordered_json;
using testing::ElementsAre;
using testing::IsEmpty;

Json hook(std::string_view cls, std::string_view selector, std::string_view replacement, const char* state) {
  return {{"class", cls},        {"selector", selector}, {"classMethod", false}, {"replacement", replacement},
          {"installer", Json()}, {"state", state}};
}

/// What a process would tell in which all that is said is true.
HookList all() {
  HookList hooks;
  for (const HookReason& reason : hookReasons()) {
    hooks.push_back(
        hook(reason.cls == kDelegate ? "SomeDelegate" : reason.cls, reason.selector, reason.replacement, "installed"));
  }
  return hooks;
}

HookList without(HookList hooks, const std::string& replacement) {
  std::erase_if(hooks, [&](const Json& each) { return each["replacement"] == replacement; });
  return hooks;
}

} // namespace

TEST(PublishedHooks, ThatAreThoseOfTheProcessHaveNoProblem) { EXPECT_THAT(problemsOf({{"9", all()}}), IsEmpty()); }

TEST(PublishedHooks, WithoutASentenceAreAProblemToldOnce) {
  HookList hooks = all();
  hooks.push_back(hook("UIWindow", "sendEvent:", "sb_sendEvent:", "installed"));
  EXPECT_THAT(problemsOf({{"9", hooks}, {"10", hooks}}),
              ElementsAre("nobody says why there is a hook UIWindow sb_sendEvent:"));
}

TEST(PublishedHooks, ThatNoReleaseHasAreAProblem) {
  EXPECT_THAT(problemsOf({{"9", without(all(), "sb_isPrintingAvailable")}}),
              ElementsAre("no release has a hook UIPrintInteractionController sb_isPrintingAvailable, of which it is "
                          "said why"));
}

TEST(PublishedHooks, ThatOneReleaseHasAreNoProblem) {
  EXPECT_THAT(problemsOf({{"9", without(all(), "sb_isPrintingAvailable")}, {"10", all()}}), IsEmpty());
}

TEST(PublishedHooks, ThatAreAbsentEverywhereAreAProblem) {
  HookList hooks = without(all(), "sb_openURL:");
  hooks.push_back(hook("UIApplication", "openURL:", "sb_openURL:", "absent"));
  EXPECT_THAT(problemsOf({{"9", hooks}}),
              ElementsAre("no release has a hook UIApplication sb_openURL:, of which it is said why"));
}

TEST(PublishedHooks, InFrontOfAnotherMethodThanItIsSaidAreAProblem) {
  HookList hooks = without(all(), "sb_openURL:");
  hooks.push_back(hook("UIApplication", "openURLs:", "sb_openURL:", "installed"));
  EXPECT_THAT(problemsOf({{"9", hooks}}),
              ElementsAre("UIApplication sb_openURL: is said to stand in front of openURL:, but it is openURLs:"));
}

TEST(PublishedHooks, HaveASentenceForEachHookAndEachClass) {
  for (const HookReason& reason : hookReasons()) {
    EXPECT_TRUE(reason.does.ends_with(".")) << reason.cls << " " << reason.selector;
  }
  for (const HookedClass& cls : hookedClasses()) {
    EXPECT_TRUE(cls.why.ends_with(".")) << cls.name;
    EXPECT_TRUE(std::any_of(hookReasons().begin(), hookReasons().end(), [&](const HookReason& reason) {
      return reason.cls == cls.name;
    })) << cls.name;
  }
}

TEST(ReleasesOfAHook, AreToldAsARange) {
  const std::vector<std::string> releases{"8.2", "9", "10", "11"};
  EXPECT_EQ(rangeOf(releases, {true, true, true, true}), "all");
  EXPECT_EQ(rangeOf(releases, {false, false, true, true}), "from 10");
  EXPECT_EQ(rangeOf(releases, {true, false, false, false}), "before 9");
  EXPECT_EQ(rangeOf(releases, {false, true, true, false}), "from 9, before 11");
  EXPECT_EQ(rangeOf(releases, {true, false, true, false}), "before 9; from 10, before 11");
  EXPECT_EQ(rangeOf(releases, {false, false, false, false}), "none");
}

TEST(CompletedHook, HasThePlatformsSelectorWhereTheReplacementsNameDoesNotTellIt) {
  const std::string replacement =
      "sb_shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismiss:completion:";
  const std::string selector =
      "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:";
  EXPECT_EQ(completed(hook("UIActivityViewController", replacement.substr(3), replacement, "absent"))["selector"],
            selector);
}

TEST(CompletedHook, KeepsTheSelectorThatWasSeen) {
  EXPECT_EQ(completed(hook("UIApplication", "openURLs:", "sb_openURL:", "installed"))["selector"], "openURLs:");
}

TEST(CompletedHook, KeepsTheInstallerThatWasSeen) {
  Json seen = hook("NSData", "writeToFile:atomically:", "sb_writeToFile:atomically:", "installed");
  seen["installer"] = "SomebodyElse";
  EXPECT_EQ(completed(seen)["installer"], "SomebodyElse");
}

TEST(CompletedHook, OfWhichNobodyKnowsStaysAsItIs) {
  const Json unknown = hook("UIWindow", "sendEvent:", "sb_sendEvent:", "absent");
  EXPECT_EQ(completed(unknown), unknown);
}
