// An app in a folder, wrapped, looked at and unwrapped as a person does it.
#include <fstream>
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include "Inputs.h"

using namespace inputs;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

Ended wrap(const fs::path& app, const std::vector<std::string>& more = {}) {
  std::vector<std::string> arguments = {"--framework", xcframework(), app};
  arguments.insert(arguments.end(), more.begin(), more.end());
  return runQvwrap(arguments);
}

/// The names of the libraries that objdump finds, in order.
std::vector<std::string> librariesOf(const std::string& dump) {
  std::vector<std::string> names;
  const std::regex pattern("cmd LC_LOAD_DYLIB\n +cmdsize [0-9]+\n +name (\\S+) ");
  for (std::sregex_iterator at(dump.begin(), dump.end(), pattern), end; at != end; ++at) {
    names.push_back((*at)[1]);
  }
  return names;
}

} // namespace

TEST(FolderTest, AnAppIsWrappedAndTheUserIsToldWhatIsLeftToDo) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  const Ended ended = wrap(app);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  EXPECT_EQ(
      ended.out,
      "Notes.app is wrapped: QVSandbox 4.2.0.18 is loaded before its main.\n"
      "  executable  Notes (arm64, for iOS)\n"
      "  framework   Frameworks/QVSandbox.framework\n"
      "  needed      Frameworks/Zorbel.framework/Zorbel, which the library loads and the app does not hold: add it\n"
      "It is not signed: sign the frameworks, then the app, before you install it.\n");
}

TEST(FolderTest, TheFrameworkIsTheDevicesAndWhole) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  EXPECT_EQ(snapshot(app / "Frameworks/QVSandbox.framework"),
            snapshot(folder() / "QVSandbox.xcframework/ios-arm64/QVSandbox.framework"));
  EXPECT_EQ(std::distance(fs::directory_iterator(app / "Frameworks"), {}), 1);
}

TEST(FolderTest, ASimulatorsAppGetsTheSimulatorsFramework) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host_simulator"));
  const Ended ended = wrap(app);
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, HasSubstr("  executable  Notes (x86_64, arm64, for the iOS simulator)\n"));
  EXPECT_EQ(snapshot(app / "Frameworks/QVSandbox.framework"),
            snapshot(folder() / "QVSandbox.xcframework/ios-arm64_x86_64-simulator/QVSandbox.framework"));
}

TEST(FolderTest, ObjdumpShowsTheLoadCommandsAsTheyShouldBe) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  const std::string dump = loadCommands(app / "Notes");
  EXPECT_THAT(librariesOf(dump),
              testing::ElementsAre("/System/Library/Frameworks/UIKit.framework/UIKit", "/usr/lib/libobjc.A.dylib",
                                   "/usr/lib/libSystem.B.dylib", "@rpath/QVSandbox.framework/QVSandbox"));
  EXPECT_THAT(dump, HasSubstr("cmd LC_RPATH\n      cmdsize 40\n         path @executable_path/Frameworks (offset 12)"));
  EXPECT_THAT(dump, HasSubstr("name @rpath/QVSandbox.framework/QVSandbox (offset 24)\n"
                              "   time stamp 2 Thu Jan  1 00:00:02 1970\n"
                              "      current version 4.2.0\n"
                              "compatibility version 1.0.0\n"));
}

TEST(FolderTest, ObjdumpFindsTheCommandsInEveryPart) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host_simulator"));
  ASSERT_EQ(wrap(app).status, 0);
  const std::string dump = loadCommands(app / "Notes");
  EXPECT_EQ(std::ranges::count(librariesOf(dump), "@rpath/QVSandbox.framework/QVSandbox"), 2);
}

TEST(FolderTest, RemovingGivesBackEveryByteAndEveryEntry) {
  for (const char* name : {"host", "host_with_rpath", "host_chained", "host_simulator"}) {
    const WorkFolder work;
    const fs::path app = inputs::app(work.path(), executable(name));
    const auto before = snapshot(work.path());
    ASSERT_EQ(wrap(app).status, 0) << name;
    ASSERT_NE(snapshot(work.path()), before) << name;
    const Ended ended = runQvwrap({"--remove", app});
    EXPECT_EQ(ended.status, 0) << ended.err;
    EXPECT_EQ(ended.out, "Notes.app is no longer wrapped.\n  executable  Notes is byte for byte what it was\n");
    EXPECT_EQ(snapshot(work.path()), before) << name;
  }
}

TEST(FolderTest, AFrameworksFolderThatWasThereStays) {
  for (const bool empty : {true, false}) {
    const WorkFolder work;
    const fs::path app = inputs::app(work.path(), executable("host"));
    fs::create_directory(app / "Frameworks");
    if (!empty) {
      write(app / "Frameworks/Zorbel.framework/Zorbel", "x");
    }
    const auto before = snapshot(work.path());
    const Ended ended = wrap(app);
    ASSERT_EQ(ended.status, 0);
    EXPECT_EQ(ended.out.find("needed") != std::string::npos, empty);
    ASSERT_EQ(runQvwrap({"--remove", app}).status, 0);
    EXPECT_EQ(snapshot(work.path()), before);
  }
}

TEST(FolderTest, AFrameworksFolderThatHasGotOtherContentSinceStays) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  write(app / "Frameworks/Zorbel.framework/Zorbel", "x");
  ASSERT_EQ(runQvwrap({"--remove", app}).status, 0);
  EXPECT_TRUE(fs::exists(app / "Frameworks/Zorbel.framework/Zorbel"));
  EXPECT_FALSE(fs::exists(app / "Frameworks/QVSandbox.framework"));
}

TEST(FolderTest, AnAppThatHasLostTheFrameworkIsUnwrappedAllTheSame) {
  for (const char* lost : {"Frameworks/QVSandbox.framework", "Frameworks"}) {
    const WorkFolder work;
    const fs::path app = inputs::app(work.path(), executable("host"));
    const auto before = snapshot(work.path());
    ASSERT_EQ(wrap(app).status, 0);
    fs::remove_all(app / lost);
    EXPECT_EQ(runQvwrap({"--remove", app}).status, 0) << lost;
    EXPECT_EQ(snapshot(work.path()), before) << lost;
  }
}

TEST(FolderTest, PermissionsAndExtendedAttributesOfTheExecutableStay) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  fs::permissions(app / "Notes", fs::perms(0741));
  ASSERT_EQ(setxattr((app / "Notes").c_str(), "user.kept", "yes", 3, 0), 0);
  ASSERT_EQ(wrap(app).status, 0);
  struct stat status = {};
  ASSERT_EQ(stat((app / "Notes").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0741U);
  char value[4] = {};
  EXPECT_EQ(getxattr((app / "Notes").c_str(), "user.kept", value, sizeof value), 3);
  EXPECT_STREQ(value, "yes");
}

TEST(FolderTest, ASlashAtTheEndOfThePathDoesNoHarm) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  EXPECT_EQ(wrap(app.string() + "/").status, 0);
  EXPECT_THAT(runQvwrap({"--check", app.string() + "/"}).out, HasSubstr("Notes.app is wrapped:"));
}

TEST(FolderTest, ALinkToAnAppIsTheApp) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  fs::create_symlink(app, work.path() / "Link.app");
  EXPECT_EQ(wrap(work.path() / "Link.app").status, 0);
  EXPECT_TRUE(fs::exists(app / "Frameworks/QVSandbox.framework/QVSandbox"));
}

TEST(FolderTest, ExtensionsAreLeftAloneAndNamed) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  write(app / "PlugIns/Share.appex/Share", executable("host"));
  write(app / "Watch/Wrist.app/Wrist", executable("host"));
  const Ended ended = wrap(app);
  EXPECT_THAT(ended.out, HasSubstr("  left alone  PlugIns/Share.appex: it runs in a process of its own, without the "
                                   "library\n  left alone  Watch/Wrist.app: "));
  EXPECT_EQ(contentOf(app / "PlugIns/Share.appex/Share"), executable("host"));
}

TEST(FolderTest, A32BitPartIsLeftAloneAndNamed) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), universal({armv7(), executable("host")}));
  EXPECT_THAT(wrap(app).out, HasSubstr("  left alone  armv7 (32-bit): where this part runs, the library does not\n"));
}

TEST(FolderTest, AnAppForOlderReleasesThanTheLibraryIsWrappedWithANote) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host_old"));
  EXPECT_THAT(wrap(app).out,
              HasSubstr("  note        the app runs from iOS 9.0 on, the library from 12.0 on: under older "
                        "releases the app does not start any more\n"));
}

TEST(FolderTest, ASignedAppIsWrappedWhenToldAndTheUserHearsOfIt) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host_signed"));
  write(app / "_CodeSignature/CodeResources", "x");
  write(app / "embedded.mobileprovision", "x");
  const auto before = snapshot(work.path());
  const Ended ended = wrap(app, {"--invalidate-signature"});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out,
              HasSubstr("Its signature is no longer valid: sign the frameworks, then the app, anew before you "
                        "install it.\n"));
  ASSERT_EQ(runQvwrap({"--remove", app}).status, 0);
  EXPECT_EQ(snapshot(work.path()), before);
}

TEST(FolderTest, AnAppSignedAfterItWasWrappedIsUnwrappedOnlyWhenTold) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  std::ofstream(app / "Notes", std::ios::app) << "a signature";
  const auto before = snapshot(work.path());
  const Ended refused = runQvwrap({"--remove", app});
  EXPECT_EQ(refused.status, 65);
  EXPECT_THAT(refused.err,
              HasSubstr("its executable has been signed, or changed otherwise, since it was wrapped, so it "
                        "cannot be made what it was; --invalidate-signature takes the library out all the "
                        "same.\n"));
  EXPECT_EQ(snapshot(work.path()), before);
  const Ended removed = runQvwrap({"--remove", "--invalidate-signature", app});
  EXPECT_EQ(removed.status, 0);
  EXPECT_THAT(removed.out,
              HasSubstr("Notes is not what it was: it was changed after it was wrapped, and only the library "
                        "was taken out\nSign the app before you install it.\n"));
  EXPECT_EQ(librariesOf(loadCommands(app / "Notes")).size(), 3U);
  EXPECT_FALSE(fs::exists(app / "Frameworks"));
}

TEST(CheckTest, AnAppThatIsNotWrapped) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "Notes.app is not wrapped.\n"
                       "  executable  Notes (arm64, for iOS from 12.0 on)\n"
                       "  signature   none\n");
}

TEST(CheckTest, AWrappedAppAndHow) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "Notes.app is wrapped: QVSandbox 4.2.0.18 is loaded before its main.\n"
                       "  executable   Notes (arm64, for iOS from 12.0 on)\n"
                       "  framework    Frameworks/QVSandbox.framework\n"
                       "  search path  @executable_path/Frameworks, added by qvwrap\n"
                       "  signature    none\n");
}

TEST(CheckTest, ASearchPathOfTheAppsOwnAndASignature) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host_with_rpath"));
  write(app / "_CodeSignature/CodeResources", "x");
  ASSERT_EQ(wrap(app, {"--invalidate-signature"}).status, 0);
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_THAT(ended.out, HasSubstr("  search path  @executable_path/Frameworks, the app's own\n"
                                   "  signature    it holds _CodeSignature; whether it is valid is not looked at\n"));
}

TEST(CheckTest, AnAppThatLostItsFrameworkOrAPartOfIt) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  fs::remove(app / "Frameworks/QVSandbox.framework/QVSandbox");
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.out, HasSubstr("Notes.app is not wrapped as qvwrap does it: it holds no whole "
                                   "Frameworks/QVSandbox.framework.\n"));
}

TEST(CheckTest, AnAppWithTheFrameworkOfAnotherPlatform) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  ASSERT_EQ(wrap(app).status, 0);
  fs::copy(folder() / "QVSandbox.xcframework/ios-arm64_x86_64-simulator/QVSandbox.framework",
           app / "Frameworks/QVSandbox.framework", fs::copy_options::overwrite_existing | fs::copy_options::recursive);
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.out, HasSubstr("the app is made for iOS, and the framework for the iOS simulator (arm64)"));
}

TEST(CheckTest, AnAppThatHoldsTheFrameworkAndDoesNotLoadIt) {
  const WorkFolder work;
  const fs::path app = inputs::app(work.path(), executable("host"));
  fs::create_directory(app / "Frameworks");
  fs::copy(folder() / "QVSandbox.xcframework/ios-arm64/QVSandbox.framework", app / "Frameworks/QVSandbox.framework",
           fs::copy_options::recursive);
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.out, HasSubstr("its executable does not load the library (arm64)"));
}
