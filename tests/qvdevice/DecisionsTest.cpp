// The library's decisions, as the program tells them of an app that runs: who asked, what was read, what was answered.
#include "../sharing/OtherApps.h"
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using nlohmann::json;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::string kApps = APPS;
const std::string kNothing = R"({"ready": true, "openInPolicy": 0, "pasteboardPolicy": 0, "printPolicy": 0})";

struct Given {
  std::string policies = kNothing;
  std::string events{};
  std::vector<std::string> more{};
  std::string app = kApps + "/Notes.app";
  bool json = true;
};

class Decisions : public testing::Test {
protected:
  Ended run(const Given& run) const {
    std::vector<std::string> arguments{"run", "--policies", folder.write("policies.json", run.policies)};
    if (run.json) {
      arguments.emplace_back("--json");
    }
    if (!run.events.empty()) {
      arguments.insert(arguments.end(), {"--events", folder.write("events", run.events)});
    }
    arguments.insert(arguments.end(), run.more.begin(), run.more.end());
    arguments.push_back(run.app);
    return qvdevice(arguments);
  }

  /// The decisions of a run that asks one question, without their times.
  std::vector<json> decisions(const Given& given, const std::string& question) const {
    std::vector<json> found;
    const Ended ended = run(given);
    EXPECT_EQ(ended.err, "");
    for (json record : objectsOf(ended.out, "decision")) {
      record.erase("t");
      if (record["question"] == question) {
        found.push_back(record);
      }
    }
    return found;
  }

  /// The same of an app whose launch is this text, in which `util` is whoever decides.
  std::vector<json> decisionsOf(const std::string& launch, const std::string& question) const {
    const std::string source = "#import <Foundation/Foundation.h>\n@interface NSObject (Decides)\n+ (id)instance;\n- "
                               "(BOOL)allowsOpenInWithAppId:(id)appId;\n- (BOOL)allowsPrinting;\n- "
                               "(id)mergeExcludedActivityTypes:(id)types;\n+ (BOOL)boolValueForKey:(id)key;\n@end\n" +
                               appSource("id util = [NSClassFromString(@\"ZorbelUtil\") instance];\n" + launch);
    return decisions({.policies = R"({"ready": true, "printPolicy": 1, "config": {"theme": "dark", "on": "YES"}})",
                      .app = folder.app("Outside", source)},
                     question);
  }

  const WorkFolder folder;
};

} // namespace

TEST_F(Decisions, AboutPrintingTellWhoAskedWhatWasReadAndWhatWasAnswered) {
  EXPECT_THAT(decisions({.events = "tap Print\n"}, "allowsPrinting"), ElementsAre(json::parse(R"({"kind": "decision",
                "asked": "+[UIPrintInteractionController isPrintingAvailable]", "question": "allowsPrinting",
                "read": {"isReady": true, "printPolicy": 0}, "answer": false})")));
}

TEST_F(Decisions, FollowThePolicyThatHolds) {
  const auto printing = decisions({.events = "tap Print\nset printPolicy 1\ntap Print\n"}, "allowsPrinting");
  // Where it may print, the platform asks once more.
  ASSERT_THAT(printing, SizeIs(3));
  EXPECT_EQ(printing[0]["answer"], false);
  for (const std::size_t later : {1, 2}) {
    EXPECT_EQ(printing[later]["read"], json::parse(R"({"isReady": true, "printPolicy": 1})"));
    EXPECT_EQ(printing[later]["answer"], true);
  }
}

TEST_F(Decisions, OfAnSdkThatIsNotReadyReadNoPolicy) {
  const auto printing = decisions({.policies = R"({"printPolicy": 1})", .events = "tap Print\n"}, "allowsPrinting");
  ASSERT_THAT(printing, SizeIs(1));
  EXPECT_EQ(printing[0]["read"], json::parse(R"({"isReady": false})"));
  EXPECT_EQ(printing[0]["answer"], false);
}

TEST_F(Decisions, AreNotAskedForWhereThePlatformSaysNoByItself) {
  EXPECT_THAT(decisions({.events = "tap Print\n", .more = {"--without-printing"}}, "allowsPrinting"), IsEmpty());
}

TEST_F(Decisions, AboutThePasteboardAreAskedForByTheEditMenu) {
  const auto pasteboard = decisions({.events = "tap Edit\nmenu\n"}, "allowsPasteboard");
  ASSERT_THAT(pasteboard, Not(IsEmpty()));
  EXPECT_EQ(pasteboard[0]["asked"], "-[UICalloutBar targetForAction:]");
  EXPECT_EQ(pasteboard[0]["read"], json::parse(R"({"isReady": true, "pasteboardPolicy": 0})"));
}

TEST_F(Decisions, AboutThePasteboardAreAskedForByTheDelegateWhenTheAppResigns) {
  const auto pasteboard = decisions({.events = "resign\n"}, "allowsPasteboard");
  ASSERT_THAT(pasteboard, Not(IsEmpty()));
  EXPECT_EQ(pasteboard[0]["asked"], "-[AppDelegate applicationWillResignActive:]");
}

TEST_F(Decisions, AboutOneSheetAreOneWithAllThatItRead) {
  const std::string policies = R"({"ready": true, "openInPolicy": 2, "openInWhitelist": ["com.apple.", "org.a"],
                                   "pasteboardPolicy": 1, "printPolicy": 0})";
  const auto merged = decisions({.policies = policies, .events = "tap Share\n"}, "mergeExcludedActivityTypes:");
  ASSERT_THAT(merged, SizeIs(1));
  EXPECT_EQ(merged[0]["asked"], "-[UIActivityViewController initWithActivityItems:applicationActivities:]");
  EXPECT_EQ(merged[0]["argument"], nullptr);
  EXPECT_EQ(merged[0]["read"], json::parse(R"({"isReady": true, "pasteboardPolicy": 1, "printPolicy": 0,
                                               "openInPolicy": 2, "openInWhitelist": ["com.apple.", "org.a"]})"));
  EXPECT_EQ(merged[0]["answer"], json::parse(R"(["com.apple.UIKit.activity.Print"])"));
  // Of the pasteboard alone only the delegate asks, at the end.
  for (const json& each : decisions({.policies = policies, .events = "tap Share\n"}, "allowsPasteboard")) {
    EXPECT_EQ(each["asked"], "-[AppDelegate applicationWillTerminate:]");
  }
}

TEST_F(Decisions, AboutActivitiesNameTheApp) {
  const std::string device = folder.path() / "device";
  installOtherApps(device);
  const std::string policies = R"({"ready": true, "openInPolicy": 2, "openInWhitelist": ["com.example."]})";
  const auto asked = decisions({.policies = policies,
                                .events = "tap Share\nchoose Pin\n",
                                .more = {"--device", device, "--system-version", "17.0"}},
                               "allowsOpenInWithAppId:");
  ASSERT_THAT(asked, SizeIs(1));
  EXPECT_EQ(asked[0]["asked"], "-[UIActivityViewController _performActivity:]");
  EXPECT_EQ(asked[0]["argument"], "com.example.board.pin");
  EXPECT_EQ(asked[0]["answer"], true);
}

TEST_F(Decisions, ThatAHookAsksForInItsLastActNameIt) {
  // Two hooks, the one called by the platform from within the other; each leaves its frame before it filters.
  std::vector<json> asked;
  for (const json& each :
       decisions({.events = "tap Share\n", .more = {"--system-version", "10.3"}}, "mergeExcludedActivityTypes:")) {
    asked.push_back(each["asked"]);
  }
  EXPECT_THAT(asked, ElementsAre("-[UIActivityViewController initWithActivityItems:applicationActivities:]",
                                 "-[UIActivityViewController _availableActivitiesForItems:]",
                                 "-[UIActivityViewController _availableActivities]"));
}

TEST_F(Decisions, NameNoMoreThan32Patterns) {
  const auto whitelistOf = [&](int count) {
    json patterns = json::array();
    for (int i = 0; i < count; ++i) {
      patterns.push_back("org.example" + std::to_string(i));
    }
    const json policies{{"ready", true}, {"openInPolicy", 2}, {"openInWhitelist", patterns}};
    return decisions({.policies = policies.dump(), .events = "tap Share\n"},
                     "mergeExcludedActivityTypes:")[0]["read"]["openInWhitelist"];
  };
  EXPECT_THAT(whitelistOf(32), SizeIs(32));
  EXPECT_EQ(whitelistOf(33), "33 patterns");
}

TEST_F(Decisions, AboutTheConfigurationReadOneKeyOfIt) {
  const std::string policies = R"({"ready": true, "config": {"secret": 1, "QV_ZB_WR_ENABLE_LOG_CAPTURE": true}})";
  const auto capture = decisions({.policies = policies}, "isLogCapturingEnabled");
  ASSERT_THAT(capture, SizeIs(1));
  EXPECT_EQ(capture[0]["asked"], nullptr);
  EXPECT_EQ(capture[0]["read"], json::parse(R"({"isReady": true, "config": {"QV_ZB_WR_ENABLE_LOG_CAPTURE": true}})"));
  EXPECT_EQ(capture[0]["answer"], true);
  const auto dictation =
      decisions({.policies = policies, .events = "tap Edit\ndictate hello\n"}, "isKeyboardDictationAllowed");
  ASSERT_THAT(dictation, Not(IsEmpty()));
  EXPECT_EQ(dictation[0]["read"]["config"], json::parse(R"({"QV_ZB_WR_ALLOW_KEYBOARD_DICTATION": null})"));
  EXPECT_EQ(dictation[0]["answer"], false);
}

TEST_F(Decisions, ThatTheHostAsksForAreTold) {
  const auto asked =
      decisionsOf("[NSClassFromString(@\"SBZorbelConfigHelper\") boolValueForKey:@\"on\"];", "boolValueForKey:");
  ASSERT_THAT(asked, SizeIs(1));
  EXPECT_EQ(asked[0]["asked"], "-[OutsideDelegate application:didFinishLaunchingWithOptions:]");
  EXPECT_EQ(asked[0]["argument"], "on");
  EXPECT_EQ(asked[0]["read"]["config"], json::parse(R"({"on": "YES"})"));
  EXPECT_EQ(asked[0]["answer"], true);
}

TEST_F(Decisions, AboutWhatIsNoTextOrHalfACharacterAreTold) {
  const auto asked = decisionsOf(R"(
  NSMutableString *half = [NSMutableString stringWithString:@"org.\U0001F600"];
  [half deleteCharactersInRange:NSMakeRange(5, 1)];
  [util allowsOpenInWithAppId:half];
  [util allowsOpenInWithAppId:[NSNumber numberWithInt:1]];
  [util allowsOpenInWithAppId:nil];)",
                                 "allowsOpenInWithAppId:");
  ASSERT_THAT(asked, SizeIs(3));
  EXPECT_THAT(asked[0]["argument"].get<std::string>(), StartsWith("org."));
  EXPECT_THAT(asked[1]["argument"].get<std::string>(), HasSubstr("Number"));
  EXPECT_EQ(asked[2]["argument"], nullptr);
  EXPECT_EQ(asked[2]["answer"], false);
}

TEST_F(Decisions, ThatEndInAnExceptionAreNotToldAndTheNextOneIs) {
  const std::string launch = R"(
  @try { [util mergeExcludedActivityTypes:[NSNumber numberWithInt:1]]; NSLog(@"nothing was raised"); }
  @catch (NSException *exception) { NSLog(@"raised"); }
  [util allowsPrinting];)";
  EXPECT_THAT(decisionsOf(launch, "mergeExcludedActivityTypes:"), IsEmpty());
  const auto printing = decisionsOf(launch, "allowsPrinting");
  ASSERT_THAT(printing, SizeIs(1));
  EXPECT_EQ(printing[0]["read"], json::parse(R"({"isReady": true, "printPolicy": 1})"));
}

TEST_F(Decisions, OfTwoThreadsAreNotMixed) {
  const auto asked = decisionsOf(R"(
  [NSThread detachNewThreadSelector:@selector(allowsPrinting) toTarget:util withObject:nil];
  for (int i = 0; i < 100; ++i) [util allowsPrinting];
  usleep(200000);)",
                                 "allowsPrinting");
  EXPECT_THAT(asked, SizeIs(101));
  for (const json& each : asked) {
    EXPECT_EQ(each["read"], json::parse(R"({"isReady": true, "printPolicy": 1})"));
  }
}

TEST_F(Decisions, AreShownAsALine) {
  const std::string text = run({.events = "tap Print\n", .json = false}).out;
  EXPECT_THAT(text, HasSubstr("\n  decision    +[UIPrintInteractionController isPrintingAvailable] asks "
                              "allowsPrinting: no (printPolicy 0)\n"));
}

TEST_F(Decisions, AreNotWatchedWhenNobodyListens) {
  // What the questions run is the library's own code then.
  const std::string app = folder.app("Unwatched", R"(
#define _GNU_SOURCE
#import <Foundation/Foundation.h>
#include <dlfcn.h>
#include <objc/runtime.h>
int main(void) {
  Dl_info image;
  for (NSString *name in @[ @"allowsPrinting", @"mergeExcludedActivityTypes:" ]) {
    Class util = objc_getClass("ZorbelUtil");
    dladdr((void *)class_getMethodImplementation(util, NSSelectorFromString(name)), &image);
    printf("%s\n", image.dli_fname);
  }
  return 0;
}
)");
  const std::string libraries = std::filesystem::path(LIBRARY).parent_path();
  const Ended ended = qvdevice(
      {"exec", "--", "/usr/bin/env", "LD_LIBRARY_PATH=" + libraries, "LD_PRELOAD=" LIBRARY, app + "/Unwatched"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  // Before that, the library's own start.
  EXPECT_THAT(ended.out, EndsWith("/libQVSandbox.so\n" + libraries + "/libQVSandbox.so\n"));
}
