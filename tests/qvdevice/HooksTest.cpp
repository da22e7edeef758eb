// What the library has hooked, as the program tells it of an app that runs.
#include "Program.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using nlohmann::json;
using testing::HasSubstr;

const std::string kApps = APPS;
constexpr char kPerform[] =
    "shareExtensionServiceWillPerformInServiceActivityWithDataRequest:dismissPresentation:completion:";
constexpr char kRequest[] =
    "shareExtensionServiceRequestPerformActivityInHostForExtensionActivityWithBundleIdentifier:";

std::vector<json> hooksOf(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), {"hooks", "--json"});
  const Ended ended = qvdevice(arguments);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_EQ(ended.err, "");
  return objectsOf(ended.out, "hook");
}

std::vector<json> hooksOfApp(const std::string& app) { return hooksOf({kApps + "/" + app + ".app"}); }

json hook(const std::vector<json>& hooks, const std::string& cls, const std::string& selector) {
  const auto found = std::find_if(hooks.begin(), hooks.end(), [&](const json& each) {
    return each["class"] == cls && each["selector"] == selector;
  });
  return found == hooks.end() ? json{{"state", "not there"}} : *found;
}

std::string stateOf(const std::vector<json>& hooks, const std::string& cls, const std::string& selector) {
  return hook(hooks, cls, selector)["state"];
}

std::string whyOf(const std::vector<json>& hooks, const std::string& cls, const std::string& selector) {
  return hook(hooks, cls, selector).value("why", "no reason");
}

std::set<std::string> sheetHooksOn(const std::string& release) {
  std::set<std::string> installed;
  for (const json& each : hooksOf({"--system-version", release})) {
    if (each["class"] == "UIActivityViewController" && each["state"] == "installed") {
      installed.insert(each["selector"]);
    }
  }
  return installed;
}

/// How many hooks are in each state.
std::map<std::string, int> statesOf(const std::vector<json>& hooks) {
  std::map<std::string, int> counts;
  for (const json& each : hooks) {
    ++counts[each["state"]];
  }
  return counts;
}

using States = std::map<std::string, int>;

} // namespace

TEST(Hooks, OfTheSampleAppAreAllInstalledButThoseThatTheReleaseLacks) {
  const auto hooks = hooksOf({});
  // 5 of the application, 10 of the delegate, 4 of menus and printing, 8 of the sheet, 20 of files.
  EXPECT_EQ(statesOf(hooks), (States{{"installed", 42}, {"absent", 5}}));
}

TEST(Hooks, AreToldWithReplacementInstallerAndReason) {
  const json printing = hook(hooksOf({}), "UIPrintInteractionController", "isPrintingAvailable");
  EXPECT_EQ(printing["classMethod"], true);
  EXPECT_EQ(printing["replacement"], "sb_isPrintingAvailable");
  EXPECT_EQ(printing["installer"], "UIPrintInteractionControllerSandboxInit");
  EXPECT_THAT(printing["does"].get<std::string>(), HasSubstr("printing is available"));
  EXPECT_THAT(printing["asks"].get<std::string>(), HasSubstr("printPolicy"));
  EXPECT_FALSE(printing.contains("why"));
}

TEST(Hooks, OfTheApplicationAreInstalledAtLoad) {
  const json opening = hook(hooksOf({}), "UIApplication", "openURL:");
  EXPECT_EQ(opening["state"], "installed");
  EXPECT_EQ(opening["installer"], "+[UIApplication(Sandbox) load]");
  EXPECT_EQ(opening["asks"], nullptr);
}

TEST(Hooks, OfTheCalloutBarStandInItsOwnClassThoughTheReplacementStandsInAnother) {
  const auto hooks = hooksOf({});
  EXPECT_EQ(stateOf(hooks, "UICalloutBar", "targetForAction:"), "installed");
  EXPECT_EQ(stateOf(hooks, "UIView", "targetForAction:"), "not there");
}

TEST(Hooks, OfTheShareSheetDifferFromReleaseToRelease) {
  const std::set<std::string> always{
      "initWithActivityItems:applicationActivities:", "setExcludedActivityTypes:", "_performActivity:"};
  const auto with = [&](std::set<std::string> more) {
    more.insert(always.begin(), always.end());
    return more;
  };
  EXPECT_EQ(sheetHooksOn("8.2"),
            with({"_availableActivitiesForItems:", "_availableActivities", "_performActivityOfType:"}));
  EXPECT_EQ(sheetHooksOn("10.3"),
            with({"_availableActivitiesForItems:", "_availableActivities", "_performActivityOfType:"}));
  EXPECT_EQ(sheetHooksOn("12.4"), with({"_availableActivities", kPerform, kRequest}));
  EXPECT_EQ(sheetHooksOn("13.5"), with({"_availableActivities"}));
  EXPECT_EQ(sheetHooksOn("17.0"), with({}));
}

TEST(Hooks, ThatTheReleaseLacksBearThePlatformsSelectorAndSaySo) {
  EXPECT_EQ(whyOf(hooksOf({}), "UIActivityViewController", kPerform), "this release has no such method");
}

TEST(Hooks, OfADelegateAreThereWhetherItHasTheMethodOrNot) {
  const auto hooks = hooksOfApp("WindowOnly");
  const auto ofDelegate = std::count_if(
      hooks.begin(), hooks.end(), [](const json& each) { return each["installer"] == "UIApplicationDelegateSwizzle"; });
  EXPECT_EQ(ofDelegate, 10);
  EXPECT_EQ(stateOf(hooks, "WindowOnlyDelegate", "applicationDidBecomeActive:"), "installed");
  EXPECT_EQ(stateOf(hooks, "WindowOnlyDelegate", "application:shouldAllowExtensionPointIdentifier:"), "not there");
  EXPECT_EQ(stateOf(hooks, "WindowOnlyDelegate", "zb_markerMethod"), "not there");
}

TEST(Hooks, OfADelegateThatIsAProxyAreAbsent) {
  const auto hooks = hooksOfApp("Proxied");
  EXPECT_EQ(statesOf(hooks), (States{{"installed", 32}, {"absent", 15}}));
  EXPECT_EQ(whyOf(hooks, "ZBWrappedApplicationDelegate", "window"), "no application delegate has been given it");
}

TEST(Hooks, BehindAnotherLibraryThatCameLaterAreReplacedAndItIsNamed) {
  const auto hooks = hooksOfApp("WatchedLater");
  EXPECT_EQ(statesOf(hooks), (States{{"installed", 39}, {"absent", 5}, {"replaced", 3}}));
  EXPECT_EQ(stateOf(hooks, "UIApplication", "openURL:"), "replaced");
  EXPECT_EQ(whyOf(hooks, "UIApplication", "openURL:"), "libWatcher.so");
}

TEST(Hooks, InFrontOfAnotherLibraryThatCameBeforeAreInstalledButWhereItComesToTheDelegateLater) {
  const auto hooks = hooksOfApp("Watched");
  EXPECT_EQ(stateOf(hooks, "UIApplication", "openURL:"), "installed");
  EXPECT_EQ(stateOf(hooks, "UIApplication", "setDelegate:"), "installed");
  EXPECT_EQ(stateOf(hooks, "WatchedDelegate", "applicationDidBecomeActive:"), "replaced");
  EXPECT_EQ(whyOf(hooks, "WatchedDelegate", "applicationDidBecomeActive:"), "libWatcher.so");
  EXPECT_EQ(statesOf(hooks), (States{{"installed", 39}, {"absent", 5}, {"replaced", 3}}));
}

TEST(Hooks, ThatTheAppItselfHasReplacedNameTheApp) {
  const WorkFolder folder;
  const auto hooks = hooksOf({folder.app(
      "Own", "#import <objc/runtime.h>\nstatic BOOL never(id self, SEL _cmd) { return NO; }\n" + appSource(R"(
  method_setImplementation(class_getClassMethod([UIPrintInteractionController class], @selector(isPrintingAvailable)),
                           (IMP)never);
  class_replaceMethod([UIMenuController class], @selector(setMenuItems:), (IMP)never, "v@:@");)"))});
  EXPECT_EQ(stateOf(hooks, "UIPrintInteractionController", "isPrintingAvailable"), "replaced");
  EXPECT_EQ(whyOf(hooks, "UIPrintInteractionController", "isPrintingAvailable"), "Own");
  EXPECT_EQ(stateOf(hooks, "UIMenuController", "setMenuItems:"), "replaced");
  EXPECT_EQ(statesOf(hooks)["replaced"], 2);
}

TEST(Hooks, OfAnotherSignatureAreRefusedWithTheReasonAndThoseAfterThemNotTried) {
  const auto hooks = hooksOfApp("Taken");
  EXPECT_EQ(whyOf(hooks, "UICalloutBar", "targetForAction:"),
            "alternative type encoding for selector sb_targetForAction: does not match original targetForAction: in "
            "class UICalloutBar");
  // The first two of its four come before the one whose name is taken.
  EXPECT_EQ(stateOf(hooks, "NSFileManager", "createDirectoryAtPath:withIntermediateDirectories:attributes:error:"),
            "installed");
  EXPECT_EQ(whyOf(hooks, "NSFileManager", "createFileAtPath:contents:attributes:"),
            "alternative type encoding for selector sb_createFileAtPath:contents:attributes: does not match original "
            "createFileAtPath:contents:attributes: in class NSFileManager");
  EXPECT_EQ(stateOf(hooks, "NSFileManager", "setAttributes:ofItemAtPath:error:"), "refused");
  EXPECT_EQ(whyOf(hooks, "NSFileManager", "setAttributes:ofItemAtPath:error:"),
            "not tried after another hook of the class was refused");
  // No error is asked for by this installer, so the log has no reason.
  EXPECT_THAT(whyOf(hooks, "UIPrintInteractionController", "isPrintingAvailable"),
              HasSubstr("type encoding for selector sb_isPrintingAvailable"));
  // On this release the sheet has one of the others.
  EXPECT_EQ(stateOf(hooks, "UIActivityViewController", "_performActivity:"), "refused");
  EXPECT_EQ(stateOf(hooks, "UIActivityViewController", "_availableActivities"), "absent");
  EXPECT_EQ(statesOf(hooks).count("replaced"), 0u);
  EXPECT_EQ(hooks.size(), 47u);
}

TEST(Hooks, AreShownByClassWithASummary) {
  const Ended ended = qvdevice({"hooks", "--system-version", "12.4", "--idiom", "pad"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, testing::StartsWith("Notes on a simulated tablet, system 12.4\n\nUIApplication   "));
  EXPECT_THAT(ended.out, HasSubstr("\nNSData   NSDataSandboxInit\n  installed  -writeToFile:atomically:\n"));
  EXPECT_THAT(ended.out, HasSubstr("  installed  +isPrintingAvailable\n"));
  EXPECT_THAT(ended.out, HasSubstr("  absent     -_availableActivitiesForItems:"));
  EXPECT_THAT(ended.out, testing::EndsWith("\n47 hooks: 45 installed, 2 absent\n"));
  // Each class once.
  EXPECT_EQ(ended.out.find("\nUIActivityViewController "), ended.out.rfind("\nUIActivityViewController "));
}

TEST(Hooks, ArePublishedAsTheyAre) {
  const Ended ended = qvdevice({"hooks", "--markdown"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  std::ostringstream published;
  published << std::ifstream(PUBLISHED).rdbuf();
  EXPECT_EQ(ended.out, published.str()) << "build/linux/bin/qvdevice hooks --markdown >docs/hooks.md";
}

TEST(Hooks, ArePublishedWithTheReleasesThatHaveThem) {
  const std::string text = qvdevice({"hooks", "--markdown"}).out;
  EXPECT_THAT(text, HasSubstr("\n| `-_performActivity:` | all | "));
  EXPECT_THAT(text, HasSubstr("\n| `-_performActivityOfType:` | before 11 | "));
  EXPECT_THAT(text, HasSubstr("\n| `-_availableActivities` | before 17 | "));
  EXPECT_THAT(text, HasSubstr("\n| `-" + std::string(kPerform) + "` | from 11, before 13 | "));
  EXPECT_THAT(text, HasSubstr("\n| `+archiveRootObject:toFile:` | all | "));
}

TEST(Hooks, OfAnAppThatIsNotThereAreRefused) {
  const Ended ended = qvdevice({"hooks", "/nowhere/Lost.app"});
  EXPECT_EQ(ended.status, 66);
  EXPECT_THAT(ended.err, HasSubstr("there is no app at /nowhere/Lost.app"));
}

TEST(Hooks, OfAnAppThatEndsTooSoonAreAFailureWithItsLastWords) {
  const WorkFolder folder;
  const Ended ended = qvdevice({"hooks", folder.app("Brief", appSource(R"(write(1, "no time\n", 8); _exit(3);)"))});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.err, "qvdevice: Brief ended before it could be asked: no time\n");
  EXPECT_EQ(ended.out, "");
}

TEST(Hooks, OfAnAppThatHangsAreAFailureAfterTheTimeout) {
  const WorkFolder folder;
  const Ended ended = qvdevice({"hooks", "--timeout", "1", folder.app("Idle", appSource("for (;;) pause();"))});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.err, "qvdevice: Idle gave no answer in 1 second and was ended\n");
}

TEST(Hooks, ArePublishedOverAllReleasesAndNotForOne) {
  EXPECT_EQ(qvdevice({"hooks", "--markdown", "--system-version", "12.4"}).status, 64);
  EXPECT_EQ(qvdevice({"hooks", "--markdown", "--json"}).status, 64);
}
