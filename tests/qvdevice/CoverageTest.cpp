// How often each hook was called, as a run tells at its end.
#include "Program.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

constexpr char kRetired[] = "set authState 2 \"You have left us.\"\nends\n";

class Coverage : public testing::Test {
protected:
  Ended run(const std::string& app, const std::string& events = "", std::vector<std::string> more = {"--json"}) const {
    more.insert(more.begin(),
                {"run", "--policies", folder.write("policies.json", R"({"ready": true, "authState": 1})")});
    if (!events.empty()) {
      more.insert(more.end(), {"--events", folder.write("events", events)});
    }
    more.push_back(app);
    return qvdevice(more);
  }

  std::string outside(const std::string& launch) const { return folder.app("Outside", appSource(launch)); }

  /// The hooks of the one record of a run.
  static json hooksOf(const Ended& ended) {
    const auto records = objectsOf(ended.out, "coverage");
    EXPECT_THAT(records, SizeIs(1)) << ended.err;
    return records.empty() ? json::array() : records[0]["hooks"];
  }

  static json hook(const json& hooks, const std::string& cls, const std::string& selector) {
    for (const json& each : hooks) {
      if (each["class"] == cls && each["selector"] == selector) {
        return each;
      }
    }
    return {{"fired", "there is no such hook"}};
  }

  static json fired(const json& hooks, const std::string& cls, const std::string& selector) {
    return hook(hooks, cls, selector)["fired"];
  }

  const WorkFolder folder;
};

constexpr char kUses[] = R"(
  for (int i = 0; i < 5; ++i) [[UIMenuController sharedMenuController] setMenuItems:[NSArray array]];
  for (int i = 0; i < 3; ++i) [UIPrintInteractionController isPrintingAvailable];
  [application openURL:[NSURL URLWithString:@"https://www.example.com"]];)";

} // namespace

TEST_F(Coverage, CountsTheCallsOfEachHook) {
  const json hooks = hooksOf(run(outside(kUses)));
  EXPECT_THAT(hooks, SizeIs(47));
  EXPECT_EQ(hook(hooks, "UIMenuController", "setMenuItems:"),
            json::parse(R"({"class": "UIMenuController", "selector": "setMenuItems:", "classMethod": false,
                            "state": "installed", "fired": 5})"));
  EXPECT_EQ(hook(hooks, "UIPrintInteractionController", "isPrintingAvailable"),
            json::parse(R"({"class": "UIPrintInteractionController", "selector": "isPrintingAvailable",
                            "classMethod": true, "state": "installed", "fired": 3})"));
  EXPECT_EQ(fired(hooks, "UIApplication", "openURL:"), 1);
  EXPECT_EQ(fired(hooks, "UIDocument", "saveToURL:forSaveOperation:completionHandler:"), 0);
  EXPECT_EQ(fired(hooks, "OutsideDelegate", "applicationDidBecomeActive:"), 1);
  EXPECT_EQ(fired(hooks, "OutsideDelegate", "application:didFinishLaunchingWithOptions:"), 1);
}

TEST_F(Coverage, CountsEachClassByItselfThoughTheyShareAReplacement) {
  const json hooks = hooksOf(run(outside(R"(
  for (int i = 0; i < 2; ++i) [[NSArray array] writeToFile:[self pathOf:@"a"] atomically:YES];
  for (int i = 0; i < 4; ++i) [[NSDictionary dictionary] writeToFile:[self pathOf:@"b"] atomically:YES];)")));
  EXPECT_EQ(fired(hooks, "NSArray", "writeToFile:atomically:"), 2);
  EXPECT_EQ(fired(hooks, "NSDictionary", "writeToFile:atomically:"), 4);
}

TEST_F(Coverage, HasNoNumberForWhatIsAbsent) {
  const json absent = hook(hooksOf(run(outside(""))), "UIActivityViewController", "_availableActivitiesForItems:");
  EXPECT_EQ(absent["state"], "absent");
  EXPECT_EQ(absent["why"], "this release has no such method");
  EXPECT_EQ(absent["fired"], nullptr);
}

TEST_F(Coverage, HasNoNumberForWhatWasRefused) {
  const json hooks = hooksOf(run(std::string(APPS) + "/Taken.app"));
  EXPECT_EQ(hook(hooks, "NSData", "writeToFile:atomically:")["state"], "refused");
  EXPECT_EQ(fired(hooks, "NSData", "writeToFile:atomically:"), nullptr);
  EXPECT_EQ(fired(hooks, "NSFileManager", "createDirectoryAtURL:withIntermediateDirectories:attributes:error:"), 0);
}

TEST_F(Coverage, CountsOnBehindALibraryThatCameLater) {
  const json opening = hook(hooksOf(run(std::string(APPS) + "/WatchedLater.app")), "UIApplication", "openURL:");
  EXPECT_EQ(opening["state"], "replaced");
  EXPECT_EQ(opening["why"], "libWatcher.so");
  EXPECT_EQ(opening["fired"], 1);
}

TEST_F(Coverage, CountsOnAllThreads) {
  const json hooks = hooksOf(run(outside(R"(
  __block int running = 4;
  for (int i = 0; i < 4; ++i)
    dispatch_async(dispatch_get_global_queue(0, 0), ^{
      @autoreleasepool { for (int n = 0; n < 2500; ++n) [UIPrintInteractionController isPrintingAvailable]; }
      __sync_fetch_and_sub(&running, 1);
    });
  while (__sync_fetch_and_add(&running, 0) != 0) usleep(1000);)")));
  EXPECT_EQ(fired(hooks, "UIPrintInteractionController", "isPrintingAvailable"), 10000);
}

TEST_F(Coverage, IsThereAfterACrash) {
  const Ended ended = run(outside(std::string(kUses) + "abort();"));
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(fired(hooksOf(ended), "UIMenuController", "setMenuItems:"), 5);
}

TEST_F(Coverage, IsThereAfterAnEndWithoutNotice) {
  const Ended ended = run(outside(std::string(kUses) + "_exit(7);"));
  EXPECT_EQ(fired(hooksOf(ended), "UIMenuController", "setMenuItems:"), 5);
}

TEST_F(Coverage, IsThereOfAnAppThatHangs) {
  const Ended ended = run(outside(std::string(kUses) + "for (;;) pause();"), "", {"--json", "--timeout", "1"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(fired(hooksOf(ended), "UIMenuController", "setMenuItems:"), 5);
}

TEST_F(Coverage, IsThereAfterTheWipe) {
  const Ended ended = run(outside(kUses), kRetired);
  EXPECT_EQ(ended.status, 0) << ended.out;
  EXPECT_EQ(fired(hooksOf(ended), "UIMenuController", "setMenuItems:"), 5);
}

TEST_F(Coverage, ComesAfterAllThatHappenedAndBeforeTheEnd) {
  const auto objects = objectsOf(run(outside("")).out);
  const auto coverage =
      std::find_if(objects.begin(), objects.end(), [](const json& each) { return each["kind"] == "coverage"; });
  ASSERT_NE(coverage, objects.end());
  for (auto later = coverage + 1; later != objects.end(); ++later) {
    EXPECT_TRUE((*later)["kind"] == "item" || (*later)["kind"] == "end") << *later;
  }
}

TEST_F(Coverage, IsNotThereWithoutTheLibrary) {
  EXPECT_THAT(objectsOf(run(outside(kUses), "", {"--json", "--no-library"}).out, "coverage"), SizeIs(0));
}

TEST_F(Coverage, IsShownToWhoeverWantsDetails) {
  const std::string app = outside(kUses);
  const std::string details = run(app, "", {"--verbose"}).out;
  EXPECT_THAT(details, HasSubstr("\nHow often each hook was called\n"));
  EXPECT_THAT(details, HasSubstr("\n       5  -[UIMenuController setMenuItems:]\n"));
  EXPECT_THAT(details, HasSubstr("\n       3  +[UIPrintInteractionController isPrintingAvailable]\n"));
  EXPECT_THAT(details, HasSubstr("\n       -  -[UIActivityViewController _availableActivities]   absent: this release "
                                 "has no such method\n"));
  const std::string text = run(app, "", {}).out;
  EXPECT_THAT(text, Not(HasSubstr("setMenuItems:]")));
}

TEST_F(Coverage, LeavesTheAppNothingToFind) {
  const Ended ended = run(outside(R"(
  printf("variable %s\n", getenv("QVDEVICE_COUNTERS_FD") ? "there" : "gone");
  char target[200];
  int others = 0;
  for (int descriptor = 0; descriptor < 100; ++descriptor) {
    ssize_t length = readlink([[NSString stringWithFormat:@"/proc/self/fd/%d", descriptor] UTF8String], target, 199);
    target[length < 0 ? 0 : length] = 0;
    if (strstr(target, "counters")) ++others;
  }
  printf("descriptors %d\n", others);
  fflush(stdout);)"));
  EXPECT_THAT(ended.out, HasSubstr("variable gone"));
  EXPECT_THAT(ended.out, HasSubstr("descriptors 0"));
}
