// An app in an archive, wrapped, looked at and unwrapped as a person does it.
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Archives.h"

using namespace inputs;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

class ArchiveTest : public testing::Test {
protected:
  Ended wrap(const std::vector<std::string>& more = {}) const {
    std::vector<std::string> arguments = {"--framework", xcframework(), ipa_};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return runQvwrap(arguments);
  }

  /// The archive that zip makes of the app, with these options.
  void zip(const std::string& options, View executable) const {
    inputs::app(work_.path() / "Payload", executable);
    shell("zip -q -r " + options + " Notes.ipa Payload");
  }

  std::string shell(const std::string& command) const {
    const Ended ended = runProgram({"/bin/sh", "-c", "cd '" + work_.path().string() + "' && " + command});
    EXPECT_EQ(ended.status, 0) << command << "\n" << ended.out << ended.err;
    return ended.out;
  }

  /// Wraps and unwraps the archive, which must then be the same file.
  void expectSameAfterwards(const std::string& what) const {
    const Bytes before = contentOf(ipa_);
    const Ended wrapped = wrap();
    ASSERT_EQ(wrapped.status, 0) << what << wrapped.err;
    ASSERT_NE(contentOf(ipa_), before) << what;
    shell("unzip -tq Notes.ipa");
    EXPECT_EQ(runQvwrap({"--check", ipa_}).status, 0) << what;
    const Ended removed = runQvwrap({"--remove", ipa_});
    EXPECT_EQ(removed.out, "Notes.ipa is no longer wrapped.\n  executable  Notes is byte for byte what it was\n")
        << what;
    EXPECT_TRUE(contentOf(ipa_) == before) << what;
  }

  const WorkFolder work_;
  const fs::path ipa_ = work_.path() / "Notes.ipa";
};

} // namespace

TEST_F(ArchiveTest, AnArchiveIsWrappedAndTheUserIsToldWhatIsLeftToDo) {
  zip("", executable("host"));
  const Ended ended = wrap();
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  EXPECT_EQ(
      ended.out,
      "Notes.ipa is wrapped: QVSandbox 4.2.0.18 is loaded before its main.\n"
      "  executable  Notes (arm64, for iOS)\n"
      "  framework   Frameworks/QVSandbox.framework\n"
      "  needed      Frameworks/Zorbel.framework/Zorbel, which the library loads and the app does not hold: add it\n"
      "It is not signed: sign the frameworks, then the app, before you install it.\n");
}

TEST_F(ArchiveTest, WhatUnzipFindsInItIsWhatWrappingTheFolderGives) {
  zip("", executable("host"));
  ASSERT_EQ(wrap().status, 0);
  const fs::path app = work_.path() / "Payload/Notes.app";
  ASSERT_EQ(runQvwrap({"--framework", xcframework(), app}).status, 0);
  fs::create_directory(work_.path() / "out");
  shell("unzip -q Notes.ipa -d out");
  EXPECT_EQ(snapshot(work_.path() / "out/Payload"), snapshot(work_.path() / "Payload"));
}

TEST_F(ArchiveTest, ObjdumpShowsTheLoadCommandsAsTheyShouldBe) {
  zip("", executable("host"));
  ASSERT_EQ(wrap().status, 0);
  fs::create_directory(work_.path() / "out");
  shell("unzip -q Notes.ipa -d out");
  const std::string dump = loadCommands(work_.path() / "out/Payload/Notes.app/Notes");
  EXPECT_THAT(dump, HasSubstr("name @rpath/QVSandbox.framework/QVSandbox (offset 24)"));
  EXPECT_THAT(dump, HasSubstr("path @executable_path/Frameworks (offset 12)"));
}

TEST_F(ArchiveTest, TheOtherEntriesKeepOrderTimesPermissionsAndCompression) {
  zip("", executable("host"));
  const std::string list =
      "zipinfo -l Notes.ipa | grep Payload | grep -v -e QVSandbox -e 'Notes.app/Notes$' -e Frameworks/";
  const std::string before = shell(list);
  ASSERT_EQ(wrap().status, 0);
  EXPECT_EQ(shell(list), before);
  EXPECT_EQ(shell("zipinfo -1 Notes.ipa | tail -5"), "Payload/Notes.app/Frameworks/\n"
                                                     "Payload/Notes.app/Frameworks/QVSandbox.framework/\n"
                                                     "Payload/Notes.app/Frameworks/QVSandbox.framework/Info.plist\n"
                                                     "Payload/Notes.app/Frameworks/QVSandbox.framework/QVSandbox\n"
                                                     "qvwrap.undo\n");
}

TEST_F(ArchiveTest, AnArchiveComesBackByteForByteHoweverZipMadeIt) {
  for (const char* options : {"-1", "-6", "-9", "-0", "-fd", "-X", "-D", "-y", "-fd -0"}) {
    fs::remove(ipa_);
    zip(options, executable("host_chained"));
    expectSameAfterwards(options);
  }
}

TEST_F(ArchiveTest, AStreamedArchiveComesBackByteForByte) {
  inputs::app(work_.path() / "Payload", executable("host"));
  shell("zip -q -r - Payload | cat >Notes.ipa");
  expectSameAfterwards("streamed");
}

TEST_F(ArchiveTest, AnArchiveWithACommentComesBackByteForByte) {
  write(ipa_, archiveOf(packedApp(executable("host")), "made on a PK\5\6 Friday"));
  expectSameAfterwards("comment");
}

TEST_F(ArchiveTest, AUniversalExecutableInAnArchiveComesBackByteForByte) {
  write(ipa_, archiveOf(packedApp(executable("host_simulator"))));
  expectSameAfterwards("universal");
}

TEST_F(ArchiveTest, ACompressedStreamThatZlibWouldNotMakeComesBackByteForByte) {
  // Two stored blocks in a deflate stream: what no compressor would make of an executable.
  const Bytes content = executable("host");
  std::vector<Packed> entries = packedApp(content);
  Bytes& stream = entries[3].stream;
  for (std::size_t at = 0; at < content.size(); at += 40000) {
    const std::size_t size = std::min<std::size_t>(40000, content.size() - at);
    stream.push_back(at + size == content.size() ? 1 : 0);
    for (const std::size_t word : {size, ~size}) {
      stream.push_back(static_cast<std::uint8_t>(word));
      stream.push_back(static_cast<std::uint8_t>(word >> 8));
    }
    stream.insert(stream.end(), content.begin() + static_cast<std::ptrdiff_t>(at),
                  content.begin() + static_cast<std::ptrdiff_t>(at + size));
  }
  write(ipa_, archiveOf(entries));
  expectSameAfterwards("stored blocks");
}

TEST_F(ArchiveTest, ALargeExecutableIsNotKeptTwice) {
  Bytes large = executable("host");
  std::mt19937 random(1);
  for (int i = 0; i < 3000000; ++i) {
    large.push_back(static_cast<std::uint8_t>('a' + random() % 20));
  }
  for (const char* options : {"-1", "-6", "-9"}) {
    fs::remove(ipa_);
    zip(options, large);
    const Bytes before = contentOf(ipa_);
    ASSERT_EQ(wrap().status, 0);
    EXPECT_LT(contentOf(ipa_).size(), before.size() + 200000) << options;
    ASSERT_EQ(runQvwrap({"--remove", ipa_}).status, 0);
    EXPECT_TRUE(contentOf(ipa_) == before);
    expectSameAfterwards(options);
  }
}

TEST_F(ArchiveTest, UnusedBytesBetweenEntriesComeBack) {
  // The executable gives up its place in the directory: what lies there belongs to nobody, and stays.
  std::vector<Packed> entries = packedApp(executable("host"));
  entries.insert(entries.begin() + 2, {.name = "Payload/Notes.app/Gone", .content = executable("host_old")});
  Bytes file = archiveOf(entries);
  const std::string name = "Payload/Notes.app/Gone";
  const auto central = std::find_end(file.begin(), file.end(), name.begin(), name.end()) - 46;
  file.erase(central, central + 46 + static_cast<std::ptrdiff_t>(name.size()));
  const std::size_t end = file.size() - 22;
  file[end + 8] = file[end + 10] = static_cast<std::uint8_t>(entries.size() - 1);
  setWord(file, end + 12, wordAt(file, end + 12) - static_cast<std::uint32_t>(46 + name.size()));
  write(ipa_, file);
  expectSameAfterwards("unused bytes");
}

TEST_F(ArchiveTest, AFrameworksFolderThatWasThereStays) {
  for (const bool entry : {true, false}) {
    std::vector<Packed> entries = packedApp(executable("host"));
    if (entry) {
      entries.push_back({.name = "Payload/Notes.app/Frameworks/", .content = {}, .mode = 040755});
    }
    entries.push_back({.name = "Payload/Notes.app/Frameworks/Zorbel.framework/Zorbel", .content = {1, 2, 3}});
    write(ipa_, archiveOf(entries));
    expectSameAfterwards("with Frameworks");
  }
}

TEST_F(ArchiveTest, ASignedAppIsRefusedUnlessTold) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries.push_back({.name = "Payload/Notes.app/_CodeSignature/CodeResources", .content = {1}});
  const Bytes before = archiveOf(entries);
  write(ipa_, before);
  const Ended refused = wrap();
  EXPECT_EQ(refused.status, 65);
  EXPECT_THAT(refused.err, HasSubstr("it is signed (it holds _CodeSignature)"));
  EXPECT_EQ(contentOf(ipa_), before);
  EXPECT_EQ(wrap({"--invalidate-signature"}).status, 0);
  EXPECT_EQ(runQvwrap({"--remove", ipa_}).status, 0);
  EXPECT_EQ(contentOf(ipa_), before);
}

TEST_F(ArchiveTest, AnArchiveWrappedTwiceIsRefused) {
  write(ipa_, archiveOf(packedApp(executable("host"))));
  ASSERT_EQ(wrap().status, 0);
  const Bytes wrapped = contentOf(ipa_);
  const Ended ended = wrap();
  EXPECT_EQ(ended.status, 65);
  EXPECT_THAT(ended.err, HasSubstr("it is wrapped already"));
  EXPECT_EQ(contentOf(ipa_), wrapped);
}

TEST_F(ArchiveTest, ARepackedArchiveLosesNoFileAndIsNotCalledTheSame) {
  zip("", executable("host"));
  const fs::path before = work_.path() / "before";
  fs::create_directory(before);
  shell("unzip -q Notes.ipa -d before");
  ASSERT_EQ(wrap().status, 0);
  shell("mkdir again && cd again && unzip -q ../Notes.ipa && rm ../Notes.ipa && zip -q -r -fd ../Notes.ipa Payload");
  const Ended ended = runQvwrap({"--remove", ipa_});
  EXPECT_EQ(
      ended.out,
      "Notes.ipa is no longer wrapped.\n"
      "  executable  Notes is byte for byte what it was\n"
      "  archive     not byte for byte what it was: it was changed or repacked after the app in it was wrapped; no "
      "file that it holds is lost\n");
  fs::create_directory(work_.path() / "after");
  shell("unzip -q Notes.ipa -d after");
  EXPECT_EQ(snapshot(work_.path() / "after"), snapshot(before));
}

TEST_F(ArchiveTest, AFileAddedSinceStaysWhenTheLibraryGoes) {
  zip("", executable("host"));
  ASSERT_EQ(wrap().status, 0);
  write(work_.path() / "Payload/Notes.app/Frameworks/Zorbel.framework/Zorbel", "x");
  shell("zip -q -r Notes.ipa Payload/Notes.app/Frameworks");
  const Ended ended = runQvwrap({"--remove", ipa_});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_THAT(ended.out, HasSubstr("  archive     not byte for byte what it was"));
  const std::string list = shell("unzip -tq Notes.ipa >&2; zipinfo -1 Notes.ipa");
  EXPECT_THAT(list, HasSubstr("Payload/Notes.app/Frameworks/Zorbel.framework/Zorbel\n"));
  EXPECT_THAT(list, testing::Not(HasSubstr("QVSandbox")));
}

TEST_F(ArchiveTest, AnExecutableChangedSinceIsUnwrappedOnlyWhenTold) {
  zip("", executable("host"));
  ASSERT_EQ(wrap().status, 0);
  shell("mkdir again && cd again && unzip -q ../Notes.ipa && rm ../Notes.ipa && printf signature "
        ">>Payload/Notes.app/Notes"
        " && zip -q -r ../Notes.ipa Payload qvwrap.undo");
  const Bytes before = contentOf(ipa_);
  EXPECT_EQ(runQvwrap({"--remove", ipa_}).status, 65);
  EXPECT_EQ(contentOf(ipa_), before);
  const Ended ended = runQvwrap({"--remove", "--invalidate-signature", ipa_});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("Notes is not what it was"));
  shell("unzip -tq Notes.ipa");
  EXPECT_EQ(runQvwrap({"--check", ipa_}).status, 1);
}

TEST_F(ArchiveTest, TheFilesPermissionsStayAndNothingElseIsLeftBeside) {
  write(ipa_, archiveOf(packedApp(executable("host"))));
  fs::permissions(ipa_, fs::perms(0640));
  ASSERT_EQ(wrap().status, 0);
  EXPECT_EQ(fs::status(ipa_).permissions(), fs::perms(0640));
  EXPECT_EQ(std::distance(fs::directory_iterator(work_.path()), {}), 1);
}

TEST_F(ArchiveTest, ADiskThatIsFullLeavesTheArchiveAsItWas) {
  Bytes large = executable("host");
  large.resize(900000, 0x5a);
  write(ipa_, archiveOf(packedApp(executable("host")), std::string(60000, 'c')));
  const auto before = snapshot(work_.path());
  const Ended ended = runProgram({"/bin/bash", "-c", R"(ulimit -f 8; trap "" XFSZ; exec "$0" --framework "$1" "$2")",
                                  QVWRAP, xcframework(), ipa_});
  EXPECT_EQ(ended.status, 73);
  EXPECT_THAT(ended.err, HasSubstr("Notes.ipa cannot be written: File too large"));
  EXPECT_EQ(snapshot(work_.path()), before);
}

TEST_F(ArchiveTest, ExtensionsInAnArchiveAreNamedOnce) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries.push_back({.name = "Payload/Notes.app/PlugIns/Share.appex/Share", .content = executable("host")});
  entries.push_back({.name = "Payload/Notes.app/PlugIns/Share.appex/Info.plist", .content = {1}});
  write(ipa_, archiveOf(entries));
  EXPECT_THAT(wrap().out,
              HasSubstr("add it\n  left alone  PlugIns/Share.appex: it runs in a process of its own, without "
                        "the library\nIt is not signed"));
}
