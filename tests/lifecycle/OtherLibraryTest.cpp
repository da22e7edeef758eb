// Apps that carry other libraries, which exchange the same methods, before ours or after it, or stand in its way.
#include "support/Child.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Lines = std::vector<std::string>;

/// The text without the addresses of objects, which differ from run to run.
std::string withoutAddresses(std::string text) {
  for (std::size_t at = text.find(": 0x"); at != std::string::npos; at = text.find(": 0x", at)) {
    text.erase(at, text.find('>', at) - at);
  }
  return text;
}

/// Runs the host with the libraries in front of it: the last one named is loaded into the process first. Gives what the
/// host and the other library say, what the library logs and what it asks of the SDK, in order.
Lines run(const std::string& libraries) {
  // An SDK that is ready takes part in every event.
  const std::string policies = freshFolder() + "/policies.json";
  std::ofstream(policies) << R"({"ready": true})";
  const ChildResult result = runChild({CARRYING_HOST}, {{"QVDEVICE_CONTAINER", freshFolder()},
                                                        {"QVDEVICE_POLICIES", policies},
                                                        {"QVDEVICE_TRACE_FD", "1"},
                                                        {"LD_PRELOAD", libraries},
                                                        // A sanitizer's symbolizer would be given them, too.
                                                        {"ASAN_OPTIONS", "symbolize=0"}});
  EXPECT_EQ(result.status, 0) << result.errors;
  Lines lines;
  std::istringstream stream(result.output);
  for (std::string line; std::getline(stream, line);) {
    if (!line.starts_with('\x1e')) {
      lines.push_back(line);
      continue;
    }
    const auto event = nlohmann::json::parse(line.substr(1));
    if (event["kind"] == "log") {
      lines.push_back(std::to_string(event["level"].get<int>()) + " " +
                      withoutAddresses(event["text"].get<std::string>()));
    } else if (event["kind"] == "sdk") {
      lines.push_back("sdk " + event["call"].get<std::string>());
    }
  }
  return lines;
}

/// Of the lines, in their order, those that are about `what`.
Lines about(const std::string& what, const Lines& lines) {
  Lines found;
  std::copy_if(lines.begin(), lines.end(), std::back_inserter(found),
               [&](const std::string& line) { return line.find(what) != std::string::npos && line[0] != '5'; });
  return found;
}

/// From the line on that the host says before it asks for its delegate.
Lines asking(const Lines& lines) {
  const auto from = std::find(lines.begin(), lines.end(), "host asks for its delegate");
  return {from, lines.end()};
}

const std::string kGraft = "3 -[ZBWrappedApplicationDelegate zb_";
const std::string kHook = "3 -[UIApplication(Sandbox) sb_";

} // namespace

TEST(AnotherLibrary, ThatExchangedTheSameMethodsBeforeOursSeesEveryEventAndSoDoOursAndTheHost) {
  const Lines lines = run(std::string(LIBRARY " ") + WATCHING_LIBRARY);
  // Ours is in front of it on the application, and behind it on the delegate's class, to which it came later.
  EXPECT_EQ(about("etDelegate:", lines),
            (Lines{kHook + "setDelegate:]: Setting delegate <QVCarryingDelegate>", "other setDelegate:"}));
  EXPECT_EQ(
      about("application:didFinishLaunchingWithOptions:", lines),
      (Lines{"other application:didFinishLaunchingWithOptions:", kGraft + "application:didFinishLaunchingWithOptions:]",
             "host application:didFinishLaunchingWithOptions:"}));
  EXPECT_EQ(about("applicationDidBecomeActive", lines),
            (Lines{"other applicationDidBecomeActive:", kGraft + "applicationDidBecomeActive:]",
                   "host applicationDidBecomeActive:", "3 -[QVZorbelDelegate applicationDidBecomeActive]"}));
  EXPECT_EQ(about("sendEvent:", lines), (Lines{"sdk sendEvent:", "other sendEvent:", "host sendEvent:"}));
  EXPECT_EQ(about("openURL:", lines), (Lines{kHook + "openURL:]", "other openURL:"}));
  EXPECT_EQ(asking(lines), (Lines{"host asks for its delegate", "other delegate",
                                  "0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <QVCarryingDelegate>",
                                  "host has its own delegate"}));
}

TEST(AnotherLibrary, ThatExchangesTheSameMethodsAfterOursSeesEveryEventAndSoDoOursAndTheHost) {
  const Lines lines = run(std::string(WATCHING_LIBRARY " ") + LIBRARY);
  // It is in front of ours on the application, and so comes first to the delegate's class, where ours is in front of
  // it.
  EXPECT_EQ(about("etDelegate:", lines),
            (Lines{"other setDelegate:", kHook + "setDelegate:]: Setting delegate <QVCarryingDelegate>"}));
  EXPECT_EQ(
      about("application:didFinishLaunchingWithOptions:", lines),
      (Lines{kGraft + "application:didFinishLaunchingWithOptions:]",
             "other application:didFinishLaunchingWithOptions:", "host application:didFinishLaunchingWithOptions:"}));
  EXPECT_EQ(about("applicationDidBecomeActive", lines),
            (Lines{kGraft + "applicationDidBecomeActive:]", "other applicationDidBecomeActive:",
                   "host applicationDidBecomeActive:", "3 -[QVZorbelDelegate applicationDidBecomeActive]"}));
  EXPECT_EQ(about("sendEvent:", lines), (Lines{"other sendEvent:", "sdk sendEvent:", "host sendEvent:"}));
  EXPECT_EQ(about("openURL:", lines), (Lines{"other openURL:", kHook + "openURL:]"}));
  EXPECT_EQ(asking(lines), (Lines{"host asks for its delegate", "other delegate",
                                  "0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <QVCarryingDelegate>",
                                  "host has its own delegate"}));
}

TEST(AnotherLibrary, ThatTookTheNamesOfTwoReplacementsIsLoggedAndTheOtherMethodsAreExchanged) {
  const Lines lines = run(std::string(LIBRARY " ") + TAKEN_APPLICATION_NAMES);
  const auto refused = [](const std::string& selector) {
    return "1 +[NSObject(QVSBJRSwizzle) qvsbjr_swizzleMethod:withMethod:error:]: alternative type encoding for "
           "selector sb_" +
           selector + " does not match original " + selector + " in class UIApplication";
  };
  // After the capture of standard error has begun and before anything else, in the order in which they are tried.
  ASSERT_GE(lines.size(), 5U);
  EXPECT_EQ(lines[0], "2 [ZorbelWrapper] Starting logs interception.");
  EXPECT_EQ(lines[1], "sdk setLoggingToFileSuspended:");
  EXPECT_EQ(lines[2], refused("setDelegate:"));
  EXPECT_EQ(lines[3], refused("_setDelegate:assumeOwnership:"));
  EXPECT_EQ(lines[4], "2 Sandboxing application carrying_host (4.2.0.18)");
  EXPECT_EQ(about("openURL:", lines), (Lines{kHook + "openURL:]"}));
  EXPECT_EQ(asking(lines), (Lines{"host asks for its delegate",
                                  "0 -[UIApplication(Sandbox) sb_delegate] Returning delegate <QVCarryingDelegate>",
                                  "host has its own delegate"}));
  // The delegate was set by the platform alone: nothing is grafted, and the host hears what it always heard.
  EXPECT_EQ(about("applicationDidBecomeActive", lines), (Lines{"host applicationDidBecomeActive:"}));
}
