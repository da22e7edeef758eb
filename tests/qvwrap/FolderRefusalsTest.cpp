// What is refused leaves the app as it was, to the last entry.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Inputs.h"

using namespace inputs;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

class FolderRefusalTest : public testing::Test {
protected:
  fs::path app(View content) const { return inputs::app(work_.path(), content); }

  /// Runs qvwrap and expects status, sentence and an app that is as it was.
  void expectRefused(std::vector<std::string> arguments, int status, const std::string& sentence) const {
    const auto before = snapshot(work_.path());
    const Ended ended = runQvwrap(std::move(arguments));
    EXPECT_EQ(ended.status, status) << ended.out;
    EXPECT_THAT(ended.err, HasSubstr(sentence));
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(snapshot(work_.path()), before);
  }

  void expectWrapRefused(const fs::path& app, const std::string& sentence, int status = 65) const {
    expectRefused({"--framework", xcframework(), app}, status, sentence);
  }

  /// The same where no file can become larger than this.
  void expectRefusedBySmallDisk(const fs::path& app, int kibibytes, const std::string& sentence) const {
    const auto before = snapshot(work_.path());
    const Ended ended =
        runProgram({"/bin/bash", "-c",
                    "ulimit -f " + std::to_string(kibibytes) + R"(; trap "" XFSZ; exec "$0" --framework "$1" "$2")",
                    QVWRAP, xcframework(), app});
    EXPECT_EQ(ended.status, 73) << ended.out;
    EXPECT_THAT(ended.err, HasSubstr(sentence));
    EXPECT_EQ(snapshot(work_.path()), before);
  }

  const WorkFolder work_;
};

} // namespace

TEST_F(FolderRefusalTest, TheSentenceNamesTheAppAndTheReason) {
  const fs::path app = this->app(universal({armv7()}));
  const Ended ended = runQvwrap({"--framework", xcframework(), app});
  EXPECT_EQ(ended.err, "qvwrap: " + app.string() + ": its executable is 32-bit only, and the library is 64-bit.\n");
}

TEST_F(FolderRefusalTest, AnEncryptedExecutable) {
  Bytes file = executable("host");
  const std::size_t end = 32 + wordAt(file, 20);
  setWord(file, end, 0x2c);
  setWord(file, end + 4, 24);
  setWord(file, end + 16, 1);
  setWord(file, 16, wordAt(file, 16) + 1);
  setWord(file, 20, wordAt(file, 20) + 24);
  const fs::path app = this->app(file);
  expectWrapRefused(app, "its executable is encrypted (arm64)");
  const Ended ended = runQvwrap({"--check", app});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.out, HasSubstr("  encrypted   yes, as the App Store delivers it\n"));
}

TEST_F(FolderRefusalTest, AWrappedApp) {
  const fs::path app = this->app(executable("host"));
  ASSERT_EQ(runQvwrap({"--framework", xcframework(), app}).status, 0);
  expectWrapRefused(app, "it is wrapped already: its executable loads QVSandbox (arm64)");
}

TEST_F(FolderRefusalTest, ASignedExecutable) {
  expectWrapRefused(app(executable("host_signed")), "its executable is signed (arm64)");
}

TEST_F(FolderRefusalTest, AnAppWithASealOfItsResources) {
  const fs::path app = this->app(executable("host"));
  write(app / "_CodeSignature/CodeResources", "x");
  expectWrapRefused(app, "it is signed (it holds _CodeSignature)");
}

TEST_F(FolderRefusalTest, AnAppWithAProvisioningProfile) {
  const fs::path app = this->app(executable("host"));
  write(app / "embedded.mobileprovision", "x");
  expectWrapRefused(app, "it is signed (it holds embedded.mobileprovision)");
}

TEST_F(FolderRefusalTest, ATruncatedExecutable) {
  const Bytes file = executable("host");
  expectWrapRefused(app(View(file).first(file.size() / 2)), "its executable is truncated: ");
}

TEST_F(FolderRefusalTest, AMalformedExecutable) {
  Bytes file = executable("host");
  setWord(file, 36, 0);
  expectWrapRefused(app(file), "its executable is malformed: load command 1 has a size of 0 bytes (arm64)");
}

TEST_F(FolderRefusalTest, AnEmptyExecutable) { expectWrapRefused(app({}), "its executable is empty"); }

TEST_F(FolderRefusalTest, AnExecutableWithoutRoom) {
  Bytes file = executable("host");
  leaveRoom(file, 64);
  const fs::path app = this->app(file);
  expectWrapRefused(app, "its executable has no room for the library's load commands (arm64)");
}

TEST_F(FolderRefusalTest, AnAppWithoutAnInfoPlist) {
  const fs::path app = this->app(executable("host"));
  fs::remove(app / "Info.plist");
  expectWrapRefused(app, "it is no app: it holds no Info.plist");
}

TEST_F(FolderRefusalTest, AnInfoPlistThatIsNone) {
  const fs::path app = this->app(executable("host"));
  write(app / "Info.plist", "<plist");
  expectWrapRefused(app, "its Info.plist is not a property list with a dictionary in it");
  write(app / "Info.plist", "<plist version=\"1.0\"><array/></plist>");
  expectWrapRefused(app, "its Info.plist is not a property list with a dictionary in it");
  write(app / "Info.plist", "");
  expectWrapRefused(app, "its Info.plist is not a property list with a dictionary in it");
}

TEST_F(FolderRefusalTest, AnInfoPlistThatNamesNoExecutable) {
  const fs::path app = this->app(executable("host"));
  write(app / "Info.plist", "<plist version=\"1.0\"><dict/></plist>");
  expectWrapRefused(app, "its Info.plist names no executable (CFBundleExecutable)");
}

TEST_F(FolderRefusalTest, AnExecutableOutsideOfTheApp) {
  const fs::path app = this->app(executable("host"));
  write(work_.path() / "Outside", executable("host"));
  for (const char* name : {"../Outside", "..", ".", "en.lproj/Notes", "/bin/sh"}) {
    write(app / "Info.plist", infoPlist(name));
    expectWrapRefused(app, std::string("its Info.plist names an executable outside of the app: ") + name);
  }
}

TEST_F(FolderRefusalTest, AnExecutableThatIsNotThere) {
  const fs::path app = this->app(executable("host"));
  write(app / "Info.plist", infoPlist("Note"));
  expectWrapRefused(app, "it does not hold its executable, Note");
}

TEST_F(FolderRefusalTest, AnExecutableThatIsALink) {
  const fs::path app = this->app(executable("host"));
  fs::rename(app / "Notes", work_.path() / "Outside");
  fs::create_symlink("../Outside", app / "Notes");
  expectWrapRefused(app, "Notes is a symbolic link, not a file", 66);
}

TEST_F(FolderRefusalTest, AnExecutableThatIsAFolder) {
  const fs::path app = this->app(executable("host"));
  fs::remove(app / "Notes");
  fs::create_directory(app / "Notes");
  expectWrapRefused(app, "Notes is not a file", 66);
}

TEST_F(FolderRefusalTest, AFrameworksThatIsALink) {
  const fs::path app = this->app(executable("host"));
  fs::create_directory(work_.path() / "Elsewhere");
  fs::create_directory_symlink("../Elsewhere", app / "Frameworks");
  expectWrapRefused(app, "its Frameworks is no folder");
}

TEST_F(FolderRefusalTest, AnAppThatHoldsTheFrameworkAlready) {
  const fs::path app = this->app(executable("host"));
  write(app / "Frameworks/QVSandbox.framework/QVSandbox", "x");
  expectWrapRefused(app,
                    "it holds Frameworks/QVSandbox.framework already, which its executable does not load; remove that "
                    "folder first");
}

TEST_F(FolderRefusalTest, WhatIsNotThere) {
  expectWrapRefused(work_.path() / "Nothing.app", "there is no such folder or file", 66);
}

TEST_F(FolderRefusalTest, AFrameworkThatIsNotThere) {
  const fs::path app = this->app(executable("host"));
  expectRefused({"--framework", work_.path() / "No.framework", app}, 66, "there is no framework at ");
}

TEST_F(FolderRefusalTest, ASimulatorsFrameworkForADevicesApp) {
  const fs::path app = this->app(executable("host"));
  const fs::path framework = folder() / "QVSandbox.xcframework/ios-arm64_x86_64-simulator/QVSandbox.framework";
  expectRefused({"--framework", framework, app}, 65,
                "the app is made for iOS, and the framework for the iOS simulator (arm64)");
}

TEST_F(FolderRefusalTest, ADevicesFrameworkForASimulatorsApp) {
  const fs::path app = this->app(executable("host_simulator_arm64"));
  const fs::path framework = folder() / "QVSandbox.xcframework/ios-arm64/QVSandbox.framework";
  expectRefused({"--framework", framework, app}, 65,
                "the app is made for the iOS simulator, and the framework for iOS (arm64)");
}

TEST_F(FolderRefusalTest, AnArchitectureThatTheFrameworkDoesNotHave) {
  Bytes file = executable("host");
  setWord(file, 8, 0x80000002);
  expectWrapRefused(app(universal({executable("host"), file})),
                    "the framework has no part for arm64e, which the app's executable has");
}

TEST_F(FolderRefusalTest, RemovingFromAnAppThatIsNotWrapped) {
  expectRefused({"--remove", app(executable("host"))}, 65, "it is not wrapped");
}

TEST_F(FolderRefusalTest, ADiskThatIsFullWhileTheFrameworkIsWritten) {
  const fs::path app = this->app(executable("host"));
  expectRefusedBySmallDisk(app, 16, "cannot be written: File too large");
}

TEST_F(FolderRefusalTest, ADiskThatIsFullWhileTheExecutableIsWritten) {
  Bytes file = executable("host");
  file.resize(400 * 1024);
  const fs::path app = this->app(file);
  expectRefusedBySmallDisk(app, 200, "Notes cannot be written: File too large");
  fs::create_directory(app / "Frameworks");
  expectRefusedBySmallDisk(app, 200, "Notes cannot be written: File too large");
}

TEST_F(FolderRefusalTest, ACommandLineThatSaysNotWhatToDo) {
  const fs::path app = this->app(executable("host"));
  expectRefused({app}, 64, "--framework is required");
  expectRefused({"--check", "--remove", app}, 64, "excludes");
  expectRefused({"--check", "--framework", xcframework(), app}, 64, "excludes");
  expectRefused({"--framework", xcframework()}, 64, "APP is required");
}
