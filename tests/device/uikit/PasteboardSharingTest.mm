// One pasteboard for all apps of a device, each in a process and a container of its own.
#include "support/Child.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>

namespace {

class SharedPasteboard : public testing::Test {
protected:
  /// Another app of the device, or of another device.
  ChildResult app(const std::vector<std::string> &words) const { return appOn(device, words); }

  static ChildResult appOn(const std::string &device, const std::vector<std::string> &words) {
    std::vector<std::string> command{PASTEBOARD_PEER};
    command.insert(command.end(), words.begin(), words.end());
    Environment environment{{"QVDEVICE_CONTAINER", freshFolder()}};
    if (!device.empty()) environment.emplace_back("QVDEVICE_DEVICE", device);
    return runChild(command, environment);
  }

  void expectApp(const std::vector<std::string> &words, const std::string &output) const {
    const ChildResult result = app(words);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, output);
    EXPECT_EQ(result.errors, "");
  }

  /// Apps find an empty pasteboard, are told why, and leave the database as it is.
  void expectRefused(const std::string &why) const {
    const std::string before = contentsOf(database);
    const ChildResult result = app({"read", "count", "string", "mine", "read", "watch", "active"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "0 items\nchange 0\n0 items\n");
    EXPECT_EQ(result.errors, refusal(why));
    EXPECT_EQ(contentsOf(database), before);
  }

  std::string refusal(const std::string &why) const {
    return "QVDevice: the device's pasteboard \"" + database + "\" cannot be used: " + why +
           "; it counts as empty and takes nothing until that is mended or the file removed\n";
  }

  static std::string contentsOf(const std::string &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  void sql(const char *statement) const {
    sqlite3 *opened = nullptr;
    ASSERT_EQ(sqlite3_open(database.c_str(), &opened), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(opened, statement, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(opened);
    sqlite3_close(opened);
  }

  void replaceValue(const std::string &bytes) const {
    sqlite3 *opened = nullptr;
    sqlite3_stmt *statement = nullptr;
    ASSERT_EQ(sqlite3_open(database.c_str(), &opened), SQLITE_OK);
    sqlite3_prepare_v2(opened, "UPDATE representation SET value = ?1", -1, &statement, nullptr);
    sqlite3_bind_blob(statement, 1, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
    EXPECT_EQ(sqlite3_step(statement), SQLITE_DONE);
    sqlite3_finalize(statement);
    EXPECT_EQ(sqlite3_changes(opened), 1);
    sqlite3_close(opened);
  }

  const std::string device = freshFolder();
  const std::string database = device + "/pasteboard.db";
};

} // namespace

TEST_F(SharedPasteboard, HoldsForOneAppWhatAnotherHasPut) {
  expectApp({"string", "secret"}, "");
  expectApp({"read", "count"}, "secret\nchange 1\n");
  expectApp({"add", "1", "more", "count"}, "change 2\n");
  expectApp({"read"}, "secret, more 0\n");
}

TEST_F(SharedPasteboard, IsAnotherOnAnotherDevice) {
  expectApp({"string", "secret"}, "");
  EXPECT_EQ(appOn(freshFolder(), {"read", "count"}).output, "0 items\nchange 0\n");
}

TEST_F(SharedPasteboard, IsTheProcesssOwnWithoutADevice) {
  EXPECT_EQ(appOn("", {"string", "secret", "read"}).output, "secret\n");
  EXPECT_EQ(appOn("", {"read"}).output, "0 items\n");
}

TEST_F(SharedPasteboard, IsTheGeneralOneAndNoOther) {
  expectApp({"named", "mine", "run", "named", "another's", "end", "named", ""}, "nothing\nnothing\nmine\n");
}

TEST_F(SharedPasteboard, CountsTheChangesOfAllApps) {
  expectApp({"string", "a", "count", "run", "string", "b", "string", "c", "end", "count", "string", "d", "count"},
            "change 1\nchange 3\nchange 4\n");
}

TEST_F(SharedPasteboard, TellsAnAppThatBecomesActiveWhatOthersHaveChanged) {
  expectApp({"types", "a", "watch", "run", "types", "b", "end", "read", "active", "active"},
            "1 items\nchanged, came: b, went: a\n");
}

TEST_F(SharedPasteboard, TellsOnlyOnceOfManyChangesByOthers) {
  expectApp({"types", "a", "watch", "run", "types", "b", "types", "c", "types", "a", "end", "active"},
            "changed, came: , went: \n");
}

TEST_F(SharedPasteboard, TellsOfAnOwnChangeBesideWhatOthersHaveChanged) {
  expectApp({"types", "a", "watch", "run", "types", "b", "end", "types", "c", "active"}, "changed, came: c, went: b\n");
}

TEST_F(SharedPasteboard, LosesNothingOfWhatTwoAppsAddAtOnce) {
  std::vector<std::thread> apps;
  std::vector<ChildResult> results(3);
  for (std::size_t i = 0; i < results.size(); ++i) {
    apps.emplace_back([&, i] { results[i] = app({"add", "100", "app" + std::to_string(i)}); });
  }
  for (std::thread &each : apps)
    each.join();
  for (const ChildResult &each : results) {
    EXPECT_EQ(each.status, 0);
    EXPECT_EQ(each.errors, "");
  }
  expectApp({"whole", "app0", "whole", "app1", "whole", "app2", "count"},
            "100 whole app0\n100 whole app1\n100 whole app2\nchange 300\n");
}

TEST_F(SharedPasteboard, HoldsOneWholeWriteOfTwoAppsThatSetItAtOnce) {
  std::vector<std::string> words;
  for (int i = 0; i < 20; ++i) {
    for (const char *word : {"set", "200", "name"})
      words.emplace_back(word);
  }
  std::vector<std::string> others = words;
  for (std::string &word : others)
    if (word == "name") word = "other";
  std::thread first([&] { EXPECT_EQ(app(words).errors, ""); });
  std::thread second([&] { EXPECT_EQ(app(others).errors, ""); });
  // What is seen meanwhile is whole as well.
  for (int i = 0; i < 10; ++i) {
    const std::string seen = app({"run", "whole", "name", "end"}).output;
    EXPECT_TRUE(seen == "0 whole name\n" || seen == "200 whole name\n") << seen;
  }
  first.join();
  second.join();
  const std::string seen = app({"whole", "name", "whole", "other", "count"}).output;
  EXPECT_TRUE(seen == "200 whole name\n0 whole other\nchange 40\n" ||
              seen == "0 whole name\n200 whole other\nchange 40\n")
      << seen;
}

TEST_F(SharedPasteboard, IsEmptyAndRefusesWhenItsDatabaseIsNone) {
  std::ofstream(database) << std::string(5000, 'x');
  expectRefused("file is not a database");
}

TEST_F(SharedPasteboard, IsEmptyAndRefusesWhenItsDatabaseIsAFolder) {
  ::mkdir(database.c_str(), 0755);
  const ChildResult result = app({"read", "string", "a", "read"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "0 items\n0 items\n");
  EXPECT_EQ(result.errors, refusal("unable to open database file"));
}

TEST_F(SharedPasteboard, IsEmptyAndRefusesWhenItsDatabaseIsCutOff) {
  expectApp({"set", "500", "item"}, "");
  const std::string whole = contentsOf(database);
  std::ofstream(database, std::ios::binary) << whole.substr(0, whole.size() / 2);
  expectRefused("database disk image is malformed");
}

TEST_F(SharedPasteboard, IsEmptyAndRefusesWhenItsDatabaseIsOfAnotherRelease) {
  sql("CREATE TABLE pasteboard (other); PRAGMA user_version = 2");
  expectRefused("it was made by another release of the device");
}

TEST_F(SharedPasteboard, IsEmptyAndRefusesWhenItsDatabaseIsSomebodyElses) {
  sql("CREATE TABLE pasteboard (other)");
  expectRefused("table pasteboard already exists");
}

TEST_F(SharedPasteboard, WorksAgainOnceABadDatabaseHasBeenRemoved) {
  std::ofstream(database) << std::string(5000, 'x');
  EXPECT_NE(app({"read"}).errors, "");
  std::remove(database.c_str());
  expectApp({"string", "a", "read"}, "a\n");
}

TEST_F(SharedPasteboard, IsEmptyWhenAValueMakesNoSenseAndCanBeWrittenAnew) {
  const std::string one("\1\0\0\0\0\0\0\0", 8);
  std::string nested;
  for (int depth = 0; depth < 100000; ++depth)
    nested += "a" + one;
  const std::vector<std::string> senseless = {
      "",                             // nothing
      std::string(1, '\0'),           // a kind that there is not
      "s\5",                          // half a length
      "s" + one,                      // no text
      "s" + one + "\xff",             // text that is not UTF-8
      "s" + one + "ab",               // too much
      "s" + std::string(8, '\xff'),   // longer than all memory
      "u" + one + " ",                // no URL
      "i\1",                          // half a number
      "a" + std::string(8, '\xff'),   // more than all memory
      "a" + one,                      // an entry short
      "m" + one + "b\1b\1",           // a key that is no text
      "m" + one + "s" + one + "k",    // a key without a value
      "m" + one + "a" + one + "b\1b", // a key that is an array
      nested,                         // deeper than any stack
  };
  for (const std::string &value : senseless) {
    expectApp({"string", "good"}, "");
    replaceValue(value);
    const ChildResult result = app({"read", "string", "new", "read"});
    EXPECT_EQ(result.status, 0) << value.substr(0, 20);
    EXPECT_EQ(result.output, "0 items\nnew\n") << value.substr(0, 20);
    const std::string refusal = "QVDevice: the device's pasteboard \"" + database +
                                "\" holds items of \"com.apple.UIKit.pboard.general\" that make no sense; it counts as "
                                "empty until it is written anew\n";
    EXPECT_EQ(result.errors.substr(0, refusal.size()), refusal) << value.substr(0, 20);
  }
}
