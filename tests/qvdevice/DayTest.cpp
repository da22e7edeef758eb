// The day that `make demo` shows, to its end.
#include "Program.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

/// Played once for all that is asked of it.
class Day : public testing::Test {
protected:
  static void SetUpTestSuite() {
    folder = new WorkFolder;
    ended = new Ended(qvdevice(
        {"play", "--json", "--device", folder->path() / "device", "--containers", folder->path() / "containers", DAY}));
  }

  static void TearDownTestSuite() {
    delete ended;
    delete folder;
  }

  /// One field of all records of a kind.
  static std::vector<std::string> all(const std::string& kind, const std::string& field) {
    std::vector<std::string> values;
    for (const auto& object : objectsOf(ended->out, kind)) {
      values.push_back(object.value(field, nlohmann::json()).is_string() ? object[field].get<std::string>() : "");
    }
    return values;
  }

  static std::vector<std::string> files(const fs::path& below) {
    std::vector<std::string> paths;
    for (const auto& entry : fs::recursive_directory_iterator(folder->path() / below)) {
      if (!entry.is_directory()) {
        paths.push_back(entry.path().lexically_relative(folder->path() / below));
      }
    }
    return paths;
  }

  static inline const WorkFolder* folder;
  static inline const Ended* ended;
};

TEST_F(Day, isPlayedToItsEnd) {
  EXPECT_EQ(ended->status, 0) << ended->err;
  EXPECT_THAT(
      all("end", "sentence"),
      ElementsAre("Notes ended by itself in good order, with status 0", "Leaker was told to end and did, with status 0",
                  "Reader was told to end and did, with status 0", "Leaker was told to end and did, with status 0",
                  "Reader was told to end and did, with status 0", "Vault was told to end and did, with status 0",
                  "Vault ended by itself in good order, with status 0"));
  EXPECT_THAT(all("played", "sentence"), ElementsAre("The scenario was played to its end, with 7 launches"));
}

TEST_F(Day, refusesWhatThePoliciesForbid) {
  const std::string onlyCapitals = "\"Copy\" is not offered; what is offered is \"Capitals\"";
  EXPECT_THAT(all("refused", "reason"), ElementsAre(onlyCapitals, onlyCapitals, "dictation was dismissed",
                                                    "\"Vault\" is not offered; what is offered is \"Reader\""));
}

TEST_F(Day, letsOutWhatThePoliciesAllow) {
  EXPECT_THAT(all("out", "to"), ElementsAre("com.example.reader", "com.apple.UIKit.activity.Mail", "com.example.reader",
                                            "com.example.vault", ""));
  EXPECT_THAT(files("device/Print"), ElementsAre("groceries.txt"));
  EXPECT_THAT(files("device/Outbox"), ElementsAre("com.apple.UIKit.activity.Mail/groceries.txt"));
  EXPECT_THAT(files("device/Apps/com.example.reader/Documents/Inbox"),
              UnorderedElementsAre("groceries.txt", "groceries-2.txt"));
}

TEST_F(Day, offersSharesUnderThreePolicies) {
  std::vector<std::size_t> counts;
  for (const auto& sheet : objectsOf(ended->out, "sheet")) {
    if (sheet["event"] == "shown") {
      counts.push_back(sheet["offered"].size());
    }
  }
  ASSERT_EQ(counts.size(), 3u);
  EXPECT_EQ(counts[0], 0u) << "unauthorised";
  EXPECT_EQ(counts[1], 1u) << "one app on the whitelist";
  EXPECT_GT(counts[2], 5u) << "authorised";
}

TEST_F(Day, protectsWhatNotesWrites) {
  std::map<std::string, std::string> protections;
  for (const auto& item : objectsOf(ended->out, "item")) {
    protections[item["path"]] = item["protection"].is_string() ? item["protection"].get<std::string>() : "";
  }
  for (const char* path : {"Documents/groceries.txt", "Documents/groceries.plist", "Documents/titles.plist",
                           "Documents/notes.archive", "Documents/receipt.jpg", "Documents/holidays.data",
                           "Documents/holidays-widget.data", "Documents/Catalog.sqlite", "Documents/Letter.note",
                           "Documents/Album.notebook/", "Library/Caches/Export/latest"}) {
    EXPECT_EQ(protections[path], "NSFileProtectionCompleteUntilFirstUserAuthentication") << path;
  }
  EXPECT_EQ(protections["Documents/diary.private"], "NSFileProtectionComplete");
}

TEST_F(Day, takesTheWrongPasscodeForWrongAndTheRightOneForRight) {
  std::vector<std::string> results;
  for (const auto& call : objectsOf(ended->out, "sdk")) {
    if (call["call"] == "postPasscodeExtensionResult:") {
      results.push_back(call["result"].contains("ak") ? "right" : "wrong");
    }
  }
  EXPECT_THAT(results, ElementsAre("wrong", "right"));
}

TEST_F(Day, keepsTheSecretInItsAppUntilCopyingIsAllowed) {
  std::vector<std::string> seen;
  for (const std::string& line : all("output", "text")) {
    if (const std::size_t reader = line.find("Reader sees"); reader != std::string::npos) {
      seen.push_back(line.substr(reader));
    }
  }
  ASSERT_FALSE(seen.empty());
  EXPECT_EQ(seen[0], "Reader sees nothing");
  EXPECT_THAT(seen, Contains(HasSubstr("The merger is off")));
}

TEST_F(Day, letsAnUnauthorisedAppCheckInAndEndsItOtherwise) {
  const auto logs = all("log", "text");
  EXPECT_THAT(logs, Contains("App is not authorized but check-in is requested hence not aborting the process."));
  EXPECT_THAT(logs, Contains("App is not authorized so shutting down."));
}

TEST_F(Day, keepsTheCapturedLogOfNotesAndWipesVault) {
  EXPECT_THAT(files("containers/com.example.notes/Library/Logs/Zorbel"), Contains(StartsWith("sandbox_")));
  EXPECT_THAT(files("containers/com.example.notes/Documents"), Contains("groceries.txt"));
  // The bundle stays, and so does the SDK's own log, which is written while the app ends.
  for (const std::string& file : files("containers/com.example.vault")) {
    EXPECT_TRUE(file.starts_with("Vault.app/") || file == "Library/Logs/Zorbel/zorbel.log") << file << " is left";
  }
  EXPECT_THAT(files("containers/com.example.vault"), Contains("Vault.app/Info.plist"));
}

} // namespace
