// The sample app under the library, as `make demo` shows it.
#include "Program.h"

#include <map>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFirstUnlock = "NSFileProtectionCompleteUntilFirstUserAuthentication";
constexpr const char* kComplete = "NSFileProtectionComplete";

const Ended& notes() {
  static const Ended ended = qvdevice({"run", "--json", NOTES_APP});
  return ended;
}

std::vector<std::string> failuresIn(const std::string& output) {
  std::vector<std::string> failures;
  for (const auto& line : objectsOf(output, "output")) {
    const std::string text = line["text"];
    if (const auto start = text.find("Could not"); start != std::string::npos) {
      failures.push_back(text.substr(start));
    }
  }
  return failures;
}

TEST(Notes, logsTheStartUpOfTheLibraryInItsFixedOrderBeforeItIsLaunched) {
  std::vector<std::string> lines;
  for (const auto& object : objectsOf(notes().out)) {
    if (object["kind"] == "sdk" && object.contains("version")) { // the SDK's object is made last
      break;
    }
    if (object["kind"] == "log") {
      lines.push_back(std::to_string(object["level"].get<int>()) + " " + object["text"].get<std::string>());
    }
  }
  EXPECT_THAT(lines,
              ElementsAre("2 [ZorbelWrapper] Starting logs interception.", "2 Sandboxing application Notes (4.2.0.18)",
                          "3 Sandboxing UICalloutBar", "3 Sandboxing UIMenuController",
                          "3 Sandboxing UIDocumentInteractionController", "3 Sandboxing UIPrintInteractionController",
                          "3 Sandboxing UIActivityViewController", "3 Sandboxing NSArray", "3 Sandboxing NSData",
                          "3 Sandboxing NSArray", "3 Sandboxing NSData", "3 Sandboxing NSData",
                          "3 Sandboxing NSKeyedArchiver", "3 Sandboxing NSPersistentStoreCoordinator",
                          "3 Sandboxing NSString", "3 Sandboxing UIDocument"));
}

TEST(Notes, endsWithTheProtectionClassThatEachFileIsDue) {
  std::map<std::string, std::string> found;
  for (const auto& item : objectsOf(notes().out, "item")) {
    found[item["path"]] = item["protection"].is_null() ? "" : item["protection"].get<std::string>();
  }
  const std::map<std::string, std::string> expected{{"Documents/Album.notebook/", kFirstUnlock},
                                                    {"Documents/Album.notebook/text.txt", ""},
                                                    {"Documents/Archive/", ""},
                                                    {"Documents/Archive/2014/", ""},
                                                    {"Documents/Archive/2014/05/", kFirstUnlock},
                                                    {"Documents/Catalog.sqlite", kFirstUnlock},
                                                    {"Documents/Letter.note", kFirstUnlock},
                                                    {"Documents/diary.private", kComplete},
                                                    {"Documents/groceries.plist", kFirstUnlock},
                                                    {"Documents/groceries.txt", kFirstUnlock},
                                                    {"Documents/holidays-widget.data", kFirstUnlock},
                                                    {"Documents/holidays.data", kFirstUnlock},
                                                    {"Documents/notes.archive", kFirstUnlock},
                                                    {"Documents/receipt.jpg", kFirstUnlock},
                                                    {"Documents/state.plist", kFirstUnlock},
                                                    {"Documents/titles.plist", kFirstUnlock},
                                                    {"Library/Caches/Export/", kFirstUnlock},
                                                    {"Library/Caches/Export/diary.txt", kFirstUnlock},
                                                    {"Library/Caches/Export/groceries.txt", kFirstUnlock},
                                                    {"Library/Caches/Export/holidays.txt", kFirstUnlock},
                                                    {"Library/Caches/Export/latest", kFirstUnlock}};
  EXPECT_EQ(found, expected);
}

TEST(Notes, reportsItsFailedWritesWordForWordAsWithoutTheLibrary) {
  const std::vector<std::string> with = failuresIn(notes().out);
  const std::vector<std::string> without = failuresIn(qvdevice({"run", "--json", "--no-library", NOTES_APP}).out);
  ASSERT_EQ(with.size(), 4u);
  EXPECT_EQ(with, without);
}

TEST(Notes, hasItsDelegateTakenOverAndIsToldNothingOfIt) {
  std::vector<std::string> lines;
  for (const auto& object : objectsOf(notes().out, "log")) {
    const std::string text = object["text"];
    if (object["level"] == 3 && text.starts_with("-[")) {
      lines.push_back(text);
    }
  }
  const std::string wrapped = "-[ZBWrappedApplicationDelegate zb_";
  std::vector<std::string> events;
  for (const std::string& line : lines) {
    if (line.starts_with(wrapped) && line.find("indow]") == std::string::npos &&
        line.find("indow:]") == std::string::npos) {
      events.push_back(line.substr(wrapped.size()));
    }
  }
  ASSERT_FALSE(lines.empty());
  EXPECT_THAT(lines.front(), HasSubstr("-[UIApplication(Sandbox) sb_setDelegate:]: Setting delegate <AppDelegate: 0x"));
  EXPECT_THAT(events,
              ElementsAre("application:willFinishLaunchingWithOptions:]", "application:didFinishLaunchingWithOptions:]",
                          "applicationDidBecomeActive:]", "applicationWillResignActive:]",
                          "applicationDidEnterBackground:]", "applicationWillTerminate:]"));
}

TEST(Notes, logsAtLevelZeroOnlyWhatEveryAppMakesTheLibraryLogThere) {
  std::set<std::string> texts;
  for (const auto& object : objectsOf(notes().out, "log")) {
    if (object["level"] == 0) {
      const std::string text = object["text"];
      texts.insert(text.substr(0, text.find(": 0x"))); // an address differs from run to run
    }
  }
  EXPECT_THAT(texts, ElementsAre("-[UIApplication(Sandbox) sb_delegate] Returning delegate <AppDelegate",
                                 "Missing implementation for zb_application:shouldAllowExtensionPointIdentifier:"));
}

TEST(Notes, shownToAPersonTellsWhatHappensInOrderAndEndsWithASummary) {
  const Ended ended = qvdevice({"run", NOTES_APP});
  EXPECT_EQ(ended.status, 0);
  std::size_t place = 0;
  for (const char* text :
       {"Notes 1.2 (com.example.notes) on a simulated phone, system 17.0", "Start-up", "Sandboxing application Notes",
        "The app runs", "the app is being launched",
        "Documents/groceries.txt               no class -> complete until first user authentication",
        "Saved a text as groceries.txt.", "the app is active", "Could not save Deleted/lost.txt",
        "the app is in the background", "the app is about to end", "What the app left in its container",
        "Documents/diary.private", "21 items", "Notes was told to end and did, with status 0."}) {
    const std::size_t found = ended.out.find(text, place);
    ASSERT_NE(found, std::string::npos) << text << "\nis not where it should be in\n" << ended.out;
    place = found;
  }
}

} // namespace
