// Wipes by a process of its own, in a container beside which others lie.
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "support/Child.h"

namespace {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

class WipeHost : public testing::Test {
protected:
  void SetUp() override {
    container_ = freshFolder();
    outside_ = freshFolder();
    for (const char* folder : {"Documents", "Library", "tmp"})
      fs::create_directory(container_ + "/" + folder);
  }

  void make(const std::string& path) const {
    fs::create_directories(fs::path(container_ + "/" + path).parent_path());
    std::ofstream(container_ + "/" + path) << "data";
  }

  std::string in(const std::string& path) const { return container_ + "/" + path; }

  /// The lines that the host wrote, sorted.
  Lines run(Lines words, const Environment& more = {}) const {
    words.insert(words.begin(), WIPE_HOST);
    Environment environment = more;
    if (std::ranges::none_of(more, [](const auto& variable) { return variable.first == "QVDEVICE_CONTAINER"; }))
      environment.emplace_back("QVDEVICE_CONTAINER", container_);
    const ChildResult result = runChild(words, environment);
    EXPECT_EQ(result.status, 0) << result.errors;
    Lines lines;
    std::istringstream output(result.output);
    for (std::string line; std::getline(output, line);) {
      // What the SDK said while the library was loaded has a time before it.
      if (line.size() > 1 && line[1] == ' ') lines.push_back(line);
    }
    std::ranges::sort(lines);
    return lines;
  }

  static Lines ofLevel(char level, const Lines& lines) {
    Lines some;
    std::ranges::copy_if(lines, std::back_inserter(some), [&](const std::string& line) { return line[0] == level; });
    return some;
  }

  Lines tree() const {
    Lines paths;
    for (const auto& entry : fs::recursive_directory_iterator(container_))
      paths.push_back(entry.path().string().substr(container_.size() + 1));
    std::ranges::sort(paths);
    return paths;
  }

  /// Gives everything in the container to a user without privileges, and lets that user reach it.
  void giveAway() const {
    if (::geteuid() != 0) return;
    constexpr uid_t nobody = 65534;
    for (fs::path folder = container_; folder != fs::path(std::getenv("QVDEVICE_CONTAINER")).parent_path();
         folder = folder.parent_path())
      fs::permissions(folder, fs::perms::others_exec, fs::perm_options::add);
    ASSERT_EQ(::lchown(container_.c_str(), nobody, nobody), 0);
    for (const auto& entry : fs::recursive_directory_iterator(container_))
      ASSERT_EQ(::lchown(entry.path().c_str(), nobody, nobody), 0) << entry.path();
  }

  std::string container_;
  std::string outside_;
};

std::string refused(const std::string& path, const std::string& name) {
  return "0 Error removing item: " + path + " (“" + name +
         "” couldn’t be removed because you don’t have permission to access it.)";
}

} // namespace

TEST_F(WipeHost, TouchesNothingOutsideTheContainer) {
  std::ofstream(outside_ + "/kept") << "data";
  fs::create_directory(outside_ + "/folder");
  std::ofstream(outside_ + "/folder/kept") << "data";
  for (const char* where : {"Documents/", "tmp/", ""}) {
    fs::create_symlink(outside_ + "/kept", in(std::string(where) + "to a file"));
    fs::create_symlink(outside_ + "/folder", in(std::string(where) + "to a folder"));
    fs::create_symlink("../../" + fs::path(outside_).filename().string(),
                       in(std::string(where) + "by a relative path"));
  }
  const Lines lines = run({"files"});
  EXPECT_EQ(ofLevel('0', lines), Lines{});
  EXPECT_EQ(tree(), (Lines{"Documents", "Library", "tmp"}));
  EXPECT_TRUE(fs::exists(outside_ + "/kept"));
  EXPECT_TRUE(fs::exists(outside_ + "/folder/kept"));
  for (const std::string& line : lines)
    EXPECT_EQ(line.find("to a folder/"), std::string::npos) << line;
}

TEST_F(WipeHost, RemovesOneNameOfAFileThatHasAnotherOutsideAndLeavesItsContents) {
  std::ofstream(outside_ + "/kept") << "data";
  fs::create_hard_link(outside_ + "/kept", in("Documents/kept"));
  fs::create_hard_link(outside_ + "/kept", in("kept"));
  EXPECT_EQ(ofLevel('0', run({"files"})), Lines{});
  EXPECT_EQ(tree(), (Lines{"Documents", "Library", "tmp"}));
  std::string contents;
  std::ifstream(outside_ + "/kept") >> contents;
  EXPECT_EQ(contents, "data");
}

TEST_F(WipeHost, DoesNotWalkThroughALinkInAWalkedFoldersPlace) {
  // The device's folder is the one place beyond its container where an app may write.
  std::ofstream(outside_ + "/kept") << "data";
  make("Extra/file");
  for (const std::string& target :
       {outside_, in("Extra"), std::string("../") + fs::path(outside_).filename().string()}) {
    fs::remove(in("Documents"));
    fs::create_directory_symlink(target, in("Documents"));
    const Lines lines = run({"files"}, {{"QVDEVICE_DEVICE", outside_}});
    EXPECT_EQ(ofLevel('0', lines), Lines{});
    for (const std::string& line : lines)
      EXPECT_EQ(line.find("/Documents"), std::string::npos) << line;
    EXPECT_TRUE(fs::exists(outside_ + "/kept"));
    EXPECT_TRUE(fs::is_symlink(in("Documents")));
    EXPECT_FALSE(fs::exists(fs::symlink_status(in("Extra"))));
    fs::create_directory(in("Extra"));
  }
}

TEST_F(WipeHost, OfAContainerBehindALinkWipesWhereTheLinkLeadsAndKeepsTheLink) {
  make("Documents/a/b");
  make("Extra/x");
  const std::string link = freshFolder() + "/link";
  fs::create_directory_symlink(container_, link);
  EXPECT_EQ(ofLevel('0', run({"files"}, {{"QVDEVICE_CONTAINER", link}})), Lines{});
  EXPECT_EQ(tree(), (Lines{"Documents", "Library", "tmp"}));
  EXPECT_TRUE(fs::is_symlink(link));
}

TEST_F(WipeHost, LogsOneErrorForEachReadOnlyItemAndGoesOn) {
  make("Documents/locked/file");
  make("Documents/z/free");
  make("Extra/locked/file");
  make("tmp/free");
  giveAway();
  fs::permissions(in("Documents/locked"), fs::perms::owner_read | fs::perms::owner_exec);
  fs::permissions(in("Extra/locked"), fs::perms::owner_read | fs::perms::owner_exec);
  Lines expected{refused(in("Documents/locked"), "file"), refused(in("Documents/locked/file"), "file"),
                 refused(in("Extra"), "file")};
  std::ranges::sort(expected);
  EXPECT_EQ(ofLevel('0', run({"unprivileged", "files"})), expected);
  EXPECT_EQ(tree(), (Lines{"Documents", "Documents/locked", "Documents/locked/file", "Extra", "Extra/locked",
                           "Extra/locked/file", "Library", "tmp"}));
}

TEST_F(WipeHost, LogsOneErrorForAFolderThatCannotBeReadAndRemovesAnEmptyOne) {
  make("Documents/dark/file");
  make("Documents/dark inside/folder/file");
  fs::create_directory(in("Documents/dark and empty"));
  fs::create_directories(in("Documents/holds/dark and empty"));
  giveAway();
  for (const char* dark :
       {"Documents/dark", "Documents/dark inside/folder", "Documents/dark and empty", "Documents/holds/dark and empty"})
    fs::permissions(in(dark), fs::perms::none);
  Lines expected{refused(in("Documents/dark"), "dark"), refused(in("Documents/dark inside"), "folder"),
                 refused(in("Documents/dark inside/folder"), "folder")};
  std::ranges::sort(expected);
  EXPECT_EQ(ofLevel('0', run({"unprivileged", "files"})), expected);
  for (const char* dark : {"Documents/dark", "Documents/dark inside/folder"})
    fs::permissions(in(dark), fs::perms::owner_all);
  EXPECT_EQ(tree(), (Lines{"Documents", "Documents/dark", "Documents/dark inside", "Documents/dark inside/folder",
                           "Documents/dark inside/folder/file", "Documents/dark/file", "Library", "tmp"}));
}

TEST_F(WipeHost, OfAReadOnlyHomeRemovesWhatItCan) {
  make("Documents/file");
  make("Extra");
  giveAway();
  fs::permissions(container_, fs::perms::owner_read | fs::perms::owner_exec | fs::perms::others_exec);
  EXPECT_EQ(ofLevel('0', run({"unprivileged", "files"})), (Lines{refused(in("Extra"), "Extra")}));
  fs::permissions(container_, fs::perms::owner_all);
  EXPECT_EQ(tree(), (Lines{"Documents", "Extra", "Library", "tmp"}));
}

TEST_F(WipeHost, RemovesEverythingWhenNoByteCanBeWrittenAnyMore) {
  make("Documents/a/b");
  make("tmp/y");
  make("Extra/x");
  run({"without-space", "keychain", "preferences", "files"});
  // The SDK's log is made anew for each line, and stays empty.
  for (const std::string& path : tree()) {
    EXPECT_TRUE(path == "Documents" || path == "tmp" || path == "Library" || path.starts_with("Library/Logs")) << path;
  }
}

TEST_F(WipeHost, KeepsThePreferencesOfADefaultsWithoutDomainNamesUntilTheFilesGo) {
  make("Library/Preferences/com.example.app.plist");
  const Environment without{{"QVDEVICE_SETTINGS", R"({"persistentDomainNames":false})"}};
  EXPECT_EQ(run({"preferences"}, without), Lines{});
  EXPECT_TRUE(fs::exists(in("Library/Preferences/com.example.app.plist")));
  const Lines lines = run({"preferences", "files"}, without);
  EXPECT_EQ(std::ranges::count(lines, "4 Removing item " + in("Library/Preferences/com.example.app.plist")), 1);
  EXPECT_FALSE(fs::exists(in("Library/Preferences/com.example.app.plist")));
}

TEST_F(WipeHost, LogsFiveLinesForAKeychainThatCannotBeUsed) {
  const std::string device = freshFolder();
  fs::create_directory(device + "/keychain.db");
  EXPECT_EQ(run({"keychain"}, {{"QVDEVICE_DEVICE", device}}),
            (Lines{"3 cert keychain items deleted", "3 genp keychain items deleted", "3 idnt keychain items deleted",
                   "3 inet keychain items deleted", "3 keys keychain items deleted"}));
}
