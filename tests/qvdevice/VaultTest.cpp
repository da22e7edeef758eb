// An app that holds everything that there is to lose, retired while it runs.
#include "Program.h"

#include <sqlite3.h>

#include <algorithm>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using Lines = std::vector<std::string>;

constexpr const char* kMessage = "This app has been retired.";

/// Whose each item of the class is, in the order in which they were added.
Lines owners(const std::string& device, const std::string& itemClass) {
  Lines found;
  sqlite3* database = nullptr;
  EXPECT_EQ(sqlite3_open_v2((device + "/keychain.db").c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  const auto note = [](void* into, int, char** values, char**) {
    static_cast<Lines*>(into)->push_back(values[0]);
    return 0;
  };
  const std::string query = "SELECT agrp || ' ' || labl FROM " + itemClass + " ORDER BY row";
  EXPECT_EQ(sqlite3_exec(database, query.c_str(), note, &found, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  sqlite3_close(database);
  return found;
}

class Vault : public testing::Test {
protected:
  /// In a container of its own, named so.
  Ended run(const std::string& name, const std::string& events) const {
    const std::string policies =
        folder.write("policies.json", R"({"ready": true, "authState": 1, "managedPolicy": 2})");
    const Ended ended = qvdevice({"run", "--json", "--verbose", "--device", device, "--container", containerOf(name),
                                  "--policies", policies, "--events", folder.write("events", events), VAULT_APP});
    EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
    return ended;
  }

  std::string containerOf(const std::string& name) const { return folder.path() / name; }

  /// Paths below the container, the app's own bundle left out.
  Lines tree(const std::string& name) const {
    Lines paths;
    for (const auto& entry : fs::recursive_directory_iterator(containerOf(name))) {
      const std::string path = entry.path().string().substr(containerOf(name).size() + 1);
      if (!path.starts_with("Vault.app/")) {
        paths.push_back(path);
      }
    }
    std::ranges::sort(paths);
    return paths;
  }

  const WorkFolder folder;
  const std::string device = folder.path() / "device";
};

Lines logOf(const Ended& ended) {
  Lines lines;
  for (const auto& line : objectsOf(ended.out, "log")) {
    lines.push_back(std::to_string(line["level"].get<int>()) + " " + line["text"].get<std::string>());
  }
  return lines;
}

std::ptrdiff_t place(const Lines& lines, const std::string& line) {
  EXPECT_EQ(std::ranges::count(lines, line), 1) << line;
  return std::ranges::find(lines, line) - lines.begin();
}

} // namespace

TEST_F(Vault, thatIsNotRetiredKeepsWhatItHolds) {
  run("kept", "background\n");
  const Lines paths = tree("kept");
  for (const char* path : {"Documents/Will.txt", "Documents/shelf 1/shelf 2/shelf 3/paper.txt", "Documents/to nowhere",
                           "Library/Preferences/com.example.vault.plist", "SystemData/state.txt", "tmp/scan.txt"}) {
    EXPECT_TRUE(std::ranges::count(paths, path) == 1) << path;
  }
  EXPECT_EQ(owners(device, "genp").size(), 3u);
}

TEST_F(Vault, retiredLosesItsPasswordsPreferencesAndFilesAndEnds) {
  run("kept", "background\n");
  const Lines before = tree("kept");
  const Ended ended = run("wiped", std::string("set authState 2 \"") + kMessage + "\"\nends\n");
  const std::string container = containerOf("wiped"), real = fs::canonical(container);
  const Lines log = logOf(ended);

  // The steps in their order, all of them before the message and the end.
  const Lines steps = {"2 App has been requested to retire... '" + std::string(kMessage) + "'",
                       "3 genp keychain items deleted",
                       "3 inet keychain items deleted",
                       "3 cert keychain items deleted",
                       "3 keys keychain items deleted",
                       "3 idnt keychain items deleted",
                       "3 Skipping directory: " + real + "/Vault.app",
                       "2 exiting application"};
  for (std::size_t i = 1; i < steps.size(); ++i) {
    EXPECT_LT(place(log, steps[i - 1]), place(log, steps[i])) << steps[i];
  }
  std::multiset<std::string> removed;
  for (const std::string& line : log) {
    EXPECT_FALSE(line.starts_with("0 Error removing item")) << line;
    const std::string start = "4 Removing item " + real + "/";
    if (line.starts_with(start)) {
      removed.insert(line.substr(start.size()));
    }
  }
  for (const std::string& path : before) {
    const bool walkedInto = path.starts_with("Documents/") || path.starts_with("Library/") || path.starts_with("tmp/");
    // The preferences went with their domains, one step earlier; the SDK's own log and what else lies beside it is
    // written meanwhile.
    const bool isPreference = path.starts_with("Library/Preferences/");
    if (walkedInto && !isPreference && !path.starts_with("Library/Logs")) {
      EXPECT_EQ(removed.count(path), 1u) << path;
    }
  }

  // What is left: the bundle, the three folders, and what the SDK writes after them.
  for (const std::string& path : tree("wiped")) {
    EXPECT_TRUE(path == "Documents" || path == "Library" || path == "tmp" || path == "Vault.app" ||
                path.starts_with("Library/Logs"))
        << path;
  }
  EXPECT_TRUE(fs::exists(container + "/Vault.app/Vault"));
  EXPECT_TRUE(fs::exists(container + "/Documents"));
  EXPECT_TRUE(fs::exists(container + "/tmp"));

  EXPECT_THAT(owners(device, "genp"), ElementsAre());
  EXPECT_THAT(owners(device, "inet"), ElementsAre("com.example.vault Web password"));
  EXPECT_THAT(owners(device, "cert"), ElementsAre("com.example.vault Certificate"));
  EXPECT_THAT(owners(device, "keys"), ElementsAre("com.example.vault Private key"));
  EXPECT_THAT(owners(device, "idnt"), ElementsAre("com.example.vault Identity"));

  // The message was shown, and the app ended as a real one does.
  std::vector<std::string> shown;
  std::size_t shownAt = 0, wipedAt = 0, exitAt = 0, at = 0;
  for (const auto& object : objectsOf(ended.out)) {
    ++at;
    if (object["kind"] == "sdk" && object.value("call", "") == "displayMessage:") {
      shownAt = at;
      shown.push_back(object.value("message", ""));
    }
    if (object["kind"] == "log" && object["text"] == steps[6]) wipedAt = at;
    if (object["kind"] == "log" && object["text"] == "exiting application") exitAt = at;
  }
  EXPECT_LT(wipedAt, shownAt);
  EXPECT_LT(shownAt, exitAt);
  EXPECT_THAT(shown, ElementsAre(kMessage));
  EXPECT_EQ(objectsOf(ended.out, "end")[0]["sentence"], "Vault ended by itself in good order, with status 0");
}

TEST_F(Vault, retiredLeavesAnotherAppsPasswordsOnTheDevice) {
  run("kept", "background\n");
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open((device + "/keychain.db").c_str(), &database), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(database,
                         "INSERT INTO genp (acct, svce, agrp, labl) VALUES ('ann', 'mail', 'com.example.other', 'PIN')",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(database);
  run("wiped", "set authState 2\nends\n");
  EXPECT_THAT(owners(device, "genp"), ElementsAre("com.example.other PIN"));
}
