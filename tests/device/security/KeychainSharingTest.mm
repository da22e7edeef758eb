// One keychain for all apps of a device, in a file that can be looked at.
#include "App.h"

#include <sqlite3.h>
#include <sys/stat.h>

#include <memory>

namespace {

/// The first column of every row.
std::vector<std::string> rows(const std::string &file, const std::string &query) {
  std::vector<std::string> found;
  sqlite3 *database = nullptr;
  EXPECT_EQ(sqlite3_open_v2(file.c_str(), &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  const auto note = [](void *into, int, char **values, char **) {
    static_cast<std::vector<std::string> *>(into)->push_back(values[0] ? values[0] : "(null)");
    return 0;
  };
  EXPECT_EQ(sqlite3_exec(database, query.c_str(), note, &found, nullptr), SQLITE_OK) << sqlite3_errmsg(database);
  sqlite3_close(database);
  return found;
}

} // namespace

TEST(KeychainSharing, ItemsOutliveTheAppAndItsContainer) {
  const std::string device = freshFolder();
  {
    const App app("com.example.vault");
    EXPECT_EQ(app.run({"add", "genp", "ann", "one"}, device), "status 0\n");
    std::filesystem::remove_all(app.container());
  }
  const App again("com.example.vault");
  EXPECT_EQ(again.run({"find", "genp", "ann"}, device), "one\nstatus 0\n");
}

TEST(KeychainSharing, AnAppNeitherSeesNorDeletesAnothersItems) {
  const std::string device = freshFolder();
  const App vault("com.example.vault"), other("com.example.other");
  EXPECT_EQ(vault.run({"add", "genp", "ann", "one"}, device), "status 0\n");
  EXPECT_EQ(other.run({"find", "genp", "ann"}, device), "status -25300\n");
  EXPECT_EQ(other.run({"delete", "genp"}, device), "status -25300\n");
  EXPECT_EQ(other.run({"add", "genp", "ann", "two"}, device), "status 0\n") << "no duplicate of another's";
  EXPECT_EQ(vault.run({"find", "genp", "ann"}, device), "one\nstatus 0\n");
  EXPECT_EQ(rows(device + "/keychain.db", "SELECT agrp || ' ' || acct FROM genp ORDER BY row"),
            (std::vector<std::string>{"com.example.vault ann", "com.example.other ann"}));
}

TEST(KeychainSharing, WhatIsDeletedIsGoneFromTheFileToo) {
  const std::string device = freshFolder();
  const App app("com.example.vault");
  app.run({"add", "genp", "ann", "a secret of some length"}, device);
  const auto contents = [&] {
    std::ifstream file(device + "/keychain.db", std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  EXPECT_NE(contents().find("a secret of some length"), std::string::npos);
  EXPECT_EQ(app.run({"delete", "genp"}, device), "status 0\n");
  EXPECT_EQ(contents().find("a secret of some length"), std::string::npos);
}

TEST(KeychainSharing, WithoutADevicesFolderTheItemsAreGoneWithTheProcess) {
  const App app("com.example.vault");
  EXPECT_EQ(app.run({"add", "genp", "ann", "one"}), "status 0\n");
  EXPECT_EQ(app.run({"find", "genp", "ann"}), "status -25300\n");
  for (const auto &entry : std::filesystem::recursive_directory_iterator(app.container()))
    EXPECT_EQ(entry.path().string().find("keychain"), std::string::npos) << entry.path();
}

TEST(KeychainSharing, AFileThatIsNoDatabaseIsLeftAsItIsAndSaidOnce) {
  const std::string device = freshFolder();
  std::ofstream(device + "/keychain.db") << std::string(4096, 'x');
  const App app("com.example.vault");
  EXPECT_EQ(app.run({"add", "genp", "ann", "one"}, device), "status -25291\n");
  EXPECT_EQ(app.errors,
            "QVDevice: the keychain \"" + device + "/keychain.db\" cannot be used: file is not a database\n");
  EXPECT_EQ(app.run({"delete", "genp"}, device), "status -25291\n");
  EXPECT_EQ(std::filesystem::file_size(device + "/keychain.db"), 4096u);
}
