// What happens in an app's process before its `main`, seen from outside: a host is started with the library in front of
// it, and its output read.
#include "support/Child.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace fs = std::filesystem;

namespace {

using Lines = std::vector<std::string>;

const Lines kInstallers = {
    "3 Sandboxing UICalloutBar",
    "3 Sandboxing UIMenuController",
    "3 Sandboxing UIDocumentInteractionController",
    "3 Sandboxing UIPrintInteractionController",
    "3 Sandboxing UIActivityViewController",
    "3 Sandboxing NSArray",         // NSArray
    "3 Sandboxing NSData",          // NSData
    "3 Sandboxing NSArray",         // NSDictionary
    "3 Sandboxing NSData",          // NSFileManager
    "3 Sandboxing NSData",          // NSFileWrapper
    "3 Sandboxing NSKeyedArchiver", //
    "3 Sandboxing NSPersistentStoreCoordinator",
    "3 Sandboxing NSString",
    "3 Sandboxing UIDocument",
};

Lines expected(const Lines& before, Lines installers = kInstallers) {
  Lines lines = {"2 [ZorbelWrapper] Starting logs interception.",
                 "sdk setLoggingToFileSuspended:", "2 Sandboxing application startup_host (4.2.0.18)"};
  lines.insert(lines.end(), before.begin(), before.end());
  lines.insert(lines.end(), installers.begin(), installers.end());
  lines.emplace_back("sdk initPrivateWithDelegate:version:swizzledMethods: null \"4.2.0.18\" null");
  lines.emplace_back("main of the host");
  return lines;
}

class Startup : public testing::Test {
protected:
  void SetUp() override {
    container = freshFolder();
    fs::create_directories(documents());
  }

  fs::path documents() const { return fs::path(container) / "Documents"; }
  void write(const char* name) const { std::ofstream(documents() / name) << "content"; }

  /// Runs the host with the library and, in the process before it, `others`. Gives the log lines, the calls at the SDK
  /// and the host's own output, in order.
  Lines run(const std::string& others = "", const std::string& settings = "{}") {
    const ChildResult result = runChild({STARTUP_HOST}, {{"QVDEVICE_CONTAINER", container},
                                                         {"QVDEVICE_SETTINGS", settings},
                                                         {"QVDEVICE_TRACE_FD", "1"},
                                                         {"LD_PRELOAD", std::string(LIBRARY " ") + others},
                                                         // A sanitizer's symbolizer would be given the library, too.
                                                         {"ASAN_OPTIONS", "symbolize=0"}});
    EXPECT_EQ(result.status, 0) << result.errors;
    // Before the capture, and since.
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(captured(), "");
    return linesOf(result.output);
  }

  std::string captured() const {
    std::ostringstream text;
    for (const auto& file : fs::directory_iterator(fs::path(container) / "Library" / "Logs" / "Zorbel")) {
      if (file.path().filename().string().starts_with("sandbox_") && fs::file_size(file) > 0) {
        text << std::ifstream(file.path()).rdbuf();
      }
    }
    return text.str();
  }

  std::string container;

private:
  static Lines linesOf(const std::string& output) {
    Lines lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) {
      if (!line.starts_with('\x1e')) {
        lines.push_back(line);
        continue;
      }
      const auto event = nlohmann::json::parse(line.substr(1));
      if (event["kind"] == "log") {
        lines.push_back(std::to_string(event["level"].get<int>()) + " " + event["text"].get<std::string>());
      } else if (event["kind"] == "sdk" && !event.contains("version")) {
        lines.push_back("sdk " + event["call"].get<std::string>());
      } else if (event["kind"] == "sdk") {
        lines.push_back("sdk " + event["call"].get<std::string>() + " " + event["delegate"].dump() + " " +
                        event["version"].dump() + " " + event["swizzledMethods"].dump());
      }
    }
    return lines;
  }
};

} // namespace

TEST_F(Startup, LogsItsStartInstallsInOrderAndCreatesTheSdkBeforeTheHostsMain) {
  write("note.txt");
  EXPECT_EQ(run(), expected({}));
  EXPECT_TRUE(fs::exists(documents() / "note.txt"));
}

TEST_F(Startup, RemovesAStaleConfigurationFileSilentlyAndNothingElse) {
  write("QVConfig.plist");
  write("QVConfig.plist.bak");
  EXPECT_EQ(run(), expected({}));
  EXPECT_FALSE(fs::exists(documents() / "QVConfig.plist"));
  EXPECT_TRUE(fs::exists(documents() / "QVConfig.plist.bak"));
}

TEST_F(Startup, RemovesAFolderOfThatNameWithItsContents) {
  fs::create_directories(documents() / "QVConfig.plist" / "inner");
  EXPECT_EQ(run(), expected({}));
  EXPECT_FALSE(fs::exists(documents() / "QVConfig.plist"));
}

TEST_F(Startup, ThatCannotRemoveTheFileLogsPathAndErrorAndInstallsEverything) {
  write("QVConfig.plist");
  const Lines lines = run(STUBBORN_FILES);
  ASSERT_GT(lines.size(), 4U);
  const std::string start =
      "0 Unable to remove file: " + fs::canonical(documents()).string() + "/QVConfig.plist due to: ";
  EXPECT_EQ(lines[3].substr(0, start.size()), start);
  EXPECT_NE(lines[3].find("I keep it", start.size()), std::string::npos) << lines[3];
  EXPECT_EQ(lines, expected({lines[3]}));
  EXPECT_TRUE(fs::exists(documents() / "QVConfig.plist"));
}

TEST_F(Startup, RunsAllInstallersInOrderThoughEveryOneCaughtAHookException) {
  // Each installer names itself and its class, so that the order is beyond doubt where start lines are the same.
  const auto refused = [](const std::string& cls, const std::string& selector) {
    return "0 " + cls + "SandboxInit: Caught HookException: +[NSObject(QVSBJRSwizzle) " +
           "qvsbjr_swizzleMethod:withMethod:error:]: alternative type encoding for selector sb_" + selector +
           " does not match original " + selector + " in class " + cls;
  };
  const Lines installers = {
      "3 Sandboxing UICalloutBar",
      refused("UICalloutBar", "targetForAction:"),
      "3 Sandboxing UIMenuController",
      refused("UIMenuController", "setMenuItems:"),
      "3 Sandboxing UIDocumentInteractionController",
      refused("UIDocumentInteractionController", "_applications:"),
      "3 Sandboxing UIPrintInteractionController",
      "0 UIPrintInteractionControllerSandboxInit: Caught HookException: (null)",
      "3 Sandboxing UIActivityViewController",
      refused("UIActivityViewController", "initWithActivityItems:applicationActivities:"),
      "3 Sandboxing NSArray",
      refused("NSArray", "writeToFile:atomically:"),
      "3 Sandboxing NSData",
      refused("NSData", "writeToFile:atomically:"),
      "3 Sandboxing NSArray",
      refused("NSDictionary", "writeToFile:atomically:"),
      "3 Sandboxing NSData",
      refused("NSFileManager", "createFileAtPath:contents:attributes:"),
      "3 Sandboxing NSData",
      refused("NSFileWrapper", "writeToURL:options:originalContentsURL:error:"),
      "3 Sandboxing NSKeyedArchiver",
      "0 NSKeyedArchiverSandboxInit: Caught HookException: (null)",
      "3 Sandboxing NSPersistentStoreCoordinator",
      refused("NSPersistentStoreCoordinator", "addPersistentStoreWithType:configuration:URL:options:error:"),
      "3 Sandboxing NSString",
      refused("NSString", "writeToURL:atomically:encoding:error:"),
      "3 Sandboxing UIDocument",
      refused("UIDocument", "saveToURL:forSaveOperation:completionHandler:"),
  };
  EXPECT_EQ(run(TAKEN_NAMES), expected({}, installers));
}

TEST_F(Startup, InstallsEverythingOnEveryReleaseWhateverPrivateMethodsItHas) {
  for (const char* release : {"8.2", "9.0", "10.3", "11.0", "12.4", "13.5", "17.0"}) {
    EXPECT_EQ(run("", std::string(R"({"systemVersion":")") + release + "\"}"), expected({})) << release;
  }
}

TEST_F(Startup, WithoutAStaleConfigurationFileRemovesNothingAndLogsNothingOfIt) {
  write("note.txt");
  for (const std::string& line : run()) {
    EXPECT_EQ(line.find("remove"), std::string::npos) << line;
    EXPECT_EQ(line.find("QVConfig"), std::string::npos) << line;
  }
  EXPECT_TRUE(fs::exists(documents() / "note.txt"));
}

TEST_F(Startup, GivesTheSdkNoDelegateTheVersionAndNoListOfMethods) {
  const Lines lines = run();
  EXPECT_EQ(std::count(lines.begin(), lines.end(),
                       "sdk initPrivateWithDelegate:version:swizzledMethods: null \"4.2.0.18\" null"),
            1);
}

#if defined(INITIALISERS)
TEST(Library, HasTheTwoInitialisersOfItsStartAndTheCRuntimesOwn) {
  // What the loader runs is in .init_array: one address each.
  const ChildResult result = runChild({"/usr/bin/readelf", "--sections", "--wide", LIBRARY}, {});
  const std::size_t at = result.output.find(".init_array");
  ASSERT_NE(at, std::string::npos) << result.errors;
  std::istringstream fields(result.output.substr(at));
  std::string name, type, address, offset, size;
  fields >> name >> type >> address >> offset >> size;
  EXPECT_EQ(std::stoul(size, nullptr, 16), INITIALISERS * sizeof(void*));
}
#endif
