// Wrapping and unwrapping of executables in memory.
#include "LoadCommands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Failure.h"
#include "Inputs.h"

using namespace inputs;
using qvwrap::FileType;
using qvwrap::LibraryCommand;
using qvwrap::Restored;
using qvwrap::Slice;

namespace {

LibraryCommand library() {
  LibraryCommand command;
  command.current.packed = 0x00040200;
  command.compatible.packed = 0x00010000;
  return command;
}

std::vector<Slice> read(View file) { return qvwrap::readMachO(file, FileType::kExecutable, "it"); }
Bytes wrapped(View file) { return qvwrap::addLibrary(file, read(file), library(), false); }
Restored unwrapped(View file) { return qvwrap::removeLibrary(file, read(file)); }

std::string refusal(View file, bool maySpoilSignature = false) {
  try {
    qvwrap::refuseUnlessWrappable(read(file), maySpoilSignature);
    return "";
  } catch (const qvwrap::Failure& failure) {
    return failure.what();
  }
}

std::string failureOf(const std::function<void()>& body) {
  try {
    body();
    return "";
  } catch (const qvwrap::Failure& failure) {
    return failure.what();
  }
}

Bytes encrypted(std::uint32_t cryptid) {
  Bytes file = executable("host");
  // The source version, which nobody needs, gives its place to an LC_ENCRYPTION_INFO_64; both begin after 8 bytes.
  const std::size_t end = 32 + wordAt(file, 20);
  setWord(file, end, 0x2c);
  setWord(file, end + 4, 24);
  setWord(file, end + 8, 0x4000);
  setWord(file, end + 12, 0x10);
  setWord(file, end + 16, cryptid);
  setWord(file, 16, wordAt(file, 16) + 1);
  setWord(file, 20, wordAt(file, 20) + 24);
  return file;
}

} // namespace

TEST(LoadCommandsTest, TheLibraryComesLastSoThatTheNumbersOfTheOthersStay) {
  const Bytes before = executable("host");
  const Bytes after = wrapped(before);
  const Slice slice = read(after)[0];
  ASSERT_EQ(slice.libraries.size(), 4U);
  EXPECT_EQ(slice.libraries[0].name, "/System/Library/Frameworks/UIKit.framework/UIKit");
  EXPECT_EQ(slice.libraries[3].name, "@rpath/QVSandbox.framework/QVSandbox");
  EXPECT_EQ(slice.libraries[3].current.packed, 0x00040200U);
  EXPECT_EQ(slice.libraries[3].compatible.packed, 0x00010000U);
  EXPECT_EQ(slice.libraries[3].size % 8, 0U);
}

TEST(LoadCommandsTest, NothingButTheHeaderAndTheNewCommandsChanges) {
  const Bytes before = executable("host");
  const Bytes after = wrapped(before);
  ASSERT_EQ(after.size(), before.size());
  const std::size_t end = 32 + wordAt(before, 20);
  const std::size_t newEnd = 32 + wordAt(after, 20);
  for (std::size_t at = 0; at < before.size(); ++at) {
    const bool counts = at >= 16 && at < 24;
    const bool added = at >= end && at < newEnd;
    if (!counts && !added) {
      ASSERT_EQ(after[at], before[at]) << at;
    }
  }
}

TEST(LoadCommandsTest, ASearchPathIsAddedOnlyWhereItIsMissing) {
  EXPECT_EQ(wordAt(wrapped(executable("host")), 16), wordAt(executable("host"), 16) + 2);
  const Bytes had = executable("host_with_rpath");
  EXPECT_EQ(wordAt(wrapped(had), 16), wordAt(had, 16) + 1);
}

TEST(LoadCommandsTest, ASearchPathThatMeansTheSameIsEnough) {
  for (const char* name : {"host_with_loader_rpath", "host_with_slash_rpath"}) {
    const Bytes file = executable(name);
    EXPECT_EQ(wordAt(wrapped(file), 16), wordAt(file, 16) + 1) << name;
  }
}

TEST(LoadCommandsTest, EveryExecutableComesBackByteForByte) {
  for (const char* name : {"host", "host_with_rpath", "host_signed", "host_chained", "host_old", "host_simulator",
                           "host_simulator_arm64"}) {
    const Bytes before = executable(name);
    const Bytes after = wrapped(before);
    EXPECT_NE(after, before) << name;
    const Restored restored = unwrapped(after);
    EXPECT_TRUE(restored.original) << name;
    EXPECT_EQ(restored.file, before) << name;
  }
}

TEST(LoadCommandsTest, BothPartsOfAUniversalExecutableAreWrapped) {
  const Bytes after = wrapped(executable("host_simulator"));
  for (const Slice& slice : read(after)) {
    ASSERT_NE(slice.library(), nullptr) << slice.architecture;
    EXPECT_EQ(slice.runpaths.size(), 1U) << slice.architecture;
  }
}

TEST(LoadCommandsTest, A32BitPartBesideA64BitOneStaysAsItIs) {
  const Bytes before = universal({armv7(), executable("host")});
  const Bytes after = wrapped(before);
  EXPECT_TRUE(std::equal(after.begin(), after.begin() + 0x8000, before.begin()));
  EXPECT_NE(read(after)[1].library(), nullptr);
  EXPECT_EQ(unwrapped(after).file, before);
}

TEST(LoadCommandsTest, TheLastByteOfRoomIsUsedAndOneLessIsRefused) {
  // 40 bytes for the search path; 24 for the library's command, 37 for its name, 23 for the note, in all a multiple
  // of 8.
  constexpr std::size_t kNeeded = 40 + 88;
  Bytes enough = executable("host");
  leaveRoom(enough, kNeeded);
  EXPECT_EQ(unwrapped(wrapped(enough)).file, enough);

  Bytes tooLittle = executable("host");
  leaveRoom(tooLittle, kNeeded - 8);
  EXPECT_EQ(
      failureOf([&] { wrapped(tooLittle); }),
      "its executable has no room for the library's load commands (arm64): they take 128 bytes and there are 120; "
      "linking the app with -headerpad 0x1000 makes room");
}

TEST(LoadCommandsTest, ByteThatSomebodyKeepsInTheRoomIsNotOverwritten) {
  Bytes file = executable("host");
  file[32 + wordAt(file, 20) + 60] = 7;
  EXPECT_THAT(failureOf([&] { wrapped(file); }), testing::HasSubstr("they take 128 bytes and there are 60"));
}

TEST(LoadCommandsTest, AnExecutableThatWasChangedSinceIsNotCalledTheOriginal) {
  Bytes file = wrapped(executable("host"));
  file.back() ^= 1;
  const Restored restored = unwrapped(file);
  EXPECT_FALSE(restored.original);
  EXPECT_EQ(read(restored.file)[0].library(), nullptr);
}

TEST(LoadCommandsTest, CommandsAddedBehindOursStay) {
  Bytes file = wrapped(executable("host"));
  const std::size_t end = 32 + wordAt(file, 20);
  setWord(file, end, 0x7ffe);
  setWord(file, end + 4, 16);
  setWord(file, end + 8, 0x12345678);
  setWord(file, 16, wordAt(file, 16) + 1);
  setWord(file, 20, wordAt(file, 20) + 16);
  const Restored restored = unwrapped(file);
  EXPECT_FALSE(restored.original);
  const std::size_t kept = commandAt(restored.file, 0x7ffe);
  EXPECT_EQ(wordAt(restored.file, kept + 8), 0x12345678U);
  EXPECT_EQ(kept + 16, 32 + wordAt(restored.file, 20));
}

TEST(LoadCommandsTest, WhatLoadsTheLibraryByOtherMeansIsNotTakenApart) {
  Bytes file = wrapped(executable("host"));
  const Slice slice = read(file)[0];
  const std::size_t note = slice.library()->offset + 24 + 37;
  file[note] = 'Q';
  EXPECT_EQ(failureOf([&] { unwrapped(file); }),
            "its executable loads QVSandbox, but not by qvwrap's doing (arm64), so what it was before is not known");
}

TEST(LoadCommandsTest, ALostSearchPathIsNotPassedOver) {
  Bytes file = wrapped(executable("host"));
  file[read(file)[0].runpaths[0].offset + 12] = '#';
  EXPECT_EQ(failureOf([&] { unwrapped(file); }),
            "its executable has lost the search path that qvwrap added (arm64), so what it was before is not known");
}

TEST(WrappableTest, WhatThisRepositoryBuildsIs) {
  for (const char* name : {"host", "host_with_rpath", "host_chained", "host_simulator"}) {
    EXPECT_EQ(refusal(executable(name)), "") << name;
  }
  EXPECT_EQ(refusal(encrypted(0)), "");
}

TEST(WrappableTest, AnEncryptedExecutableIsNot) {
  EXPECT_EQ(refusal(encrypted(1)), "its executable is encrypted (arm64), as the App Store delivers it; wrap the app as "
                                   "its maker built it");
  EXPECT_THAT(refusal(encrypted(2), true), testing::StartsWith("its executable is encrypted (arm64)"));
}

TEST(WrappableTest, A32BitExecutableIsNot) {
  EXPECT_EQ(refusal(armv7()), "its executable is 32-bit only, and the library is 64-bit");
  EXPECT_EQ(refusal(universal({armv7()})), "its executable is 32-bit only, and the library is 64-bit");
}

TEST(WrappableTest, AWrappedExecutableIsNot) {
  EXPECT_EQ(refusal(wrapped(executable("host"))), "it is wrapped already: its executable loads QVSandbox (arm64)");
}

TEST(WrappableTest, AUniversalExecutableWrappedInOnePartIsNot) {
  Bytes wrappedPart = wrapped(executable("host"));
  Bytes other = executable("host");
  setWord(other, 8, 2);
  EXPECT_EQ(refusal(universal({other, wrappedPart})), "it is wrapped already: its executable loads QVSandbox (arm64)");
}

TEST(WrappableTest, ASignedExecutableIsOnlyWhenTold) {
  EXPECT_EQ(refusal(executable("host_signed")),
            "its executable is signed (arm64), and wrapping spoils the signature; --invalidate-signature wraps it all "
            "the same");
  EXPECT_EQ(refusal(executable("host_signed"), true), "");
}

TEST(WrappableTest, AnExecutableForAnotherPlatformIsNot) {
  Bytes file = executable("host");
  setWord(file, commandAt(file, 0x32) + 8, 1);
  EXPECT_EQ(refusal(file), "its executable is made for macOS, and the library for iOS and its simulator");
}

TEST(WrappableTest, AnExecutableForNoPlatformIsNot) {
  Bytes file = executable("host");
  setWord(file, commandAt(file, 0x32), 0x7fff);
  EXPECT_EQ(refusal(file), "its executable does not say what platform it is made for (arm64)");
}

TEST(WrappableTest, AnExecutableForDeviceAndSimulatorAtOnceIsNot) {
  EXPECT_EQ(refusal(universal({executable("host"), executable("host_simulator_x86_64")})),
            "its executable is made for iOS and for its simulator at once");
}
