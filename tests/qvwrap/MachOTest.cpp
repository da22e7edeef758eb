// What is read of an executable, and each way in which one can be broken.
#include "MachO.h"

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Failure.h"
#include "Inputs.h"

using namespace inputs;
using qvwrap::FileType;
using qvwrap::Slice;
using testing::ElementsAre;

namespace {

std::vector<Slice> read(View file) { return qvwrap::readMachO(file, FileType::kExecutable, "it"); }

/// The sentence with which a file is refused; empty when it is not.
std::string refusal(View file) {
  try {
    read(file);
    return "";
  } catch (const qvwrap::Failure& failure) {
    EXPECT_EQ(failure.status(), qvwrap::kRefused);
    return failure.what();
  }
}

/// The same for the plain executable after a change.
std::string refusalOf(const std::function<void(Bytes&)>& change) {
  Bytes file = executable("host");
  change(file);
  return refusal(file);
}

constexpr std::uint32_t kSegment = 0x19;
constexpr std::uint32_t kDylib = 0xc;

} // namespace

TEST(MachOTest, AThinExecutableIsReadAsWhatItWasBuiltFor) {
  const std::vector<Slice> slices = read(executable("host"));
  ASSERT_EQ(slices.size(), 1U);
  EXPECT_EQ(slices[0].architecture, "arm64");
  EXPECT_EQ(slices[0].platform, 2U);
  EXPECT_EQ(slices[0].oldestRelease.text(), "12.0");
  EXPECT_FALSE(slices[0].encrypted);
  EXPECT_FALSE(slices[0].isSigned);
  EXPECT_TRUE(slices[0].runpaths.empty());
  ASSERT_EQ(slices[0].libraries.size(), 3U);
  EXPECT_EQ(slices[0].libraries[0].name, "/System/Library/Frameworks/UIKit.framework/UIKit");
}

TEST(MachOTest, ASignatureIsSeen) { EXPECT_TRUE(read(executable("host_signed"))[0].isSigned); }

TEST(MachOTest, SearchPathsAreReadInOrder) {
  std::vector<std::string> paths;
  const std::vector<Slice> slices = read(executable("host_with_rpath"));
  for (const auto& command : slices[0].runpaths) {
    paths.push_back(command.path);
  }
  EXPECT_THAT(paths, ElementsAre("/usr/lib/swift", "@executable_path/Frameworks"));
}

TEST(MachOTest, AUniversalExecutableIsReadPartByPart) {
  const std::vector<Slice> slices = read(executable("host_simulator"));
  ASSERT_EQ(slices.size(), 2U);
  EXPECT_EQ(slices[0].architecture, "x86_64");
  EXPECT_EQ(slices[1].architecture, "arm64");
  EXPECT_EQ(slices[0].platform, 7U);
  EXPECT_EQ(slices[1].platform, 7U);
}

TEST(MachOTest, AUniversalExecutableWith64BitOffsetsIsRead) {
  const Bytes part = executable("host");
  Bytes file(0x4000);
  const Bytes head = {0xca, 0xfe, 0xba, 0xbf, 0, 0, 0, 1, 1,    0, 0, 12, 0, 0,
                      0,    0,    0,    0,    0, 0, 0, 0, 0x40, 0, 0, 0,  0, 0};
  std::copy(head.begin(), head.end(), file.begin());
  file[30] = static_cast<std::uint8_t>(part.size() >> 8);
  file[29] = static_cast<std::uint8_t>(part.size() >> 16);
  file[31] = static_cast<std::uint8_t>(part.size());
  file[35] = 14;
  file.insert(file.end(), part.begin(), part.end());
  const std::vector<Slice> slices = read(file);
  ASSERT_EQ(slices.size(), 1U);
  EXPECT_EQ(slices[0].offset, 0x4000U);
  EXPECT_EQ(slices[0].libraries.size(), 3U);
}

TEST(MachOTest, TheSubtypeWithFlagsOfArm64eIsKnown) {
  Bytes file = executable("host");
  setWord(file, 8, 0x80000002);
  EXPECT_EQ(read(file)[0].architecture, "arm64e");
}

TEST(MachOTest, TheOlderCommandForThePlatformIsUnderstood) {
  Bytes file = executable("host");
  const std::size_t at = commandAt(file, 0x32);
  setWord(file, at, 0x25);
  setWord(file, at + 8, 0x000a0301);
  const std::vector<Slice> slices = read(file);
  EXPECT_EQ(slices[0].platform, 2U);
  EXPECT_EQ(slices[0].oldestRelease.text(), "10.3.1");
}

TEST(MachOTest, TheRoomEndsAtTheFirstByteThatIsNotZero) {
  Bytes file = executable("host");
  const std::size_t end = 32 + wordAt(file, 20);
  EXPECT_GT(read(file)[0].room, 0x1000U);
  file[end + 100] = 1;
  EXPECT_EQ(read(file)[0].room, 100U);
}

TEST(MachOTest, A32BitPartIsKnownAsSuch) {
  const std::vector<Slice> slices = read(universal({armv7(), executable("host")}));
  ASSERT_EQ(slices.size(), 2U);
  EXPECT_FALSE(slices[0].is64);
  EXPECT_EQ(slices[0].architecture, "armv7");
  EXPECT_TRUE(slices[1].is64);
}

TEST(MachORefusalTest, AnEmptyFile) { EXPECT_EQ(refusal({}), "it is empty"); }

TEST(MachORefusalTest, WhatIsNoMachOFile) {
  EXPECT_EQ(refusal(qvwrap::viewOf("#!/bin/sh\nexit 0\n")), "it is not a Mach-O file");
  EXPECT_EQ(refusal(qvwrap::viewOf("abc")), "it is not a Mach-O file");
  EXPECT_EQ(refusal(Bytes{0xca, 0xfe, 0xba, 0xbe, 0, 0, 0, 52, 0, 1}), "it is not a Mach-O file"); // Java 8
}

TEST(MachORefusalTest, ABigEndianExecutable) {
  EXPECT_EQ(refusalOf([](Bytes& file) { setWord(file, 0, 0xcffaedfe); }),
            "it is made for big-endian processors, which no iPhone or iPad has");
}

TEST(MachORefusalTest, ALibraryInThePlaceOfAnExecutable) {
  EXPECT_EQ(refusal(executable("not_a_host")), "it is a Mach-O file, but no executable");
}

TEST(MachORefusalTest, EveryTruncation) {
  const Bytes file = executable("host");
  EXPECT_EQ(refusal(View(file).first(20)), "it is truncated: it ends within its header");
  EXPECT_EQ(refusal(View(file).first(100)), "it is truncated: it ends within its load commands (arm64)");
  EXPECT_EQ(refusal(View(file).first(file.size() - 1)),
            "it is truncated: segment __LINKEDIT ends beyond its end (arm64)");
  for (std::size_t size = 0; size < file.size(); size += size < 4096 ? 1 : 509) {
    EXPECT_NE(refusal(View(file).first(size)), "") << size;
  }
}

TEST(MachORefusalTest, LoadCommandsThatTakeLessThanTheHeaderSays) {
  EXPECT_THAT(
      refusalOf([](Bytes& file) { setWord(file, 16, wordAt(file, 16) - 1); }),
      testing::MatchesRegex(R"(it is malformed: the load commands take .* bytes, and the header says .* \(arm64\))"));
}

TEST(MachORefusalTest, MoreLoadCommandsThanThereIsSpaceFor) {
  EXPECT_THAT(refusalOf([](Bytes& file) { setWord(file, 16, wordAt(file, 16) + 1); }),
              testing::StartsWith("it is malformed: the space for load commands ends before command "));
  EXPECT_THAT(refusalOf([](Bytes& file) { setWord(file, 16, 0xffffffff); }),
              testing::StartsWith("it is malformed: the space for load commands ends before command "));
}

TEST(MachORefusalTest, ALoadCommandOfNoSizeOrAnOddOneOrTooLargeAOne) {
  EXPECT_EQ(refusalOf([](Bytes& file) { setWord(file, 36, 0); }),
            "it is malformed: load command 1 has a size of 0 bytes (arm64)");
  EXPECT_EQ(refusalOf([](Bytes& file) { setWord(file, 36, 71); }),
            "it is malformed: load command 1 has a size of 71 bytes (arm64)");
  EXPECT_EQ(refusalOf([](Bytes& file) { setWord(file, 36, 0xfffffff8); }),
            "it is malformed: load command 1 has a size of 4294967288 bytes (arm64)");
}

TEST(MachORefusalTest, ALoadCommandTooShortForItsKind) {
  EXPECT_THAT(refusalOf([](Bytes& file) { setWord(file, commandAt(file, 0x26), kDylib); }),
              testing::EndsWith("is too short for its kind (arm64)"));
}

TEST(MachORefusalTest, ALibraryNameOutsideOfItsCommandOrWithoutAnEnd) {
  EXPECT_THAT(refusalOf([](Bytes& file) { setWord(file, commandAt(file, kDylib) + 8, 4096); }),
              testing::EndsWith("has its text outside of itself (arm64)"));
  EXPECT_THAT(refusalOf([](Bytes& file) { setWord(file, commandAt(file, kDylib) + 8, 8); }),
              testing::EndsWith("has its text outside of itself (arm64)"));
  EXPECT_THAT(refusalOf([](Bytes& file) {
                const std::size_t at = commandAt(file, kDylib);
                std::fill_n(file.begin() + static_cast<std::ptrdiff_t>(at + 24), wordAt(file, at + 4) - 24, 'x');
              }),
              testing::EndsWith("has a text without an end (arm64)"));
}

TEST(MachORefusalTest, ASegmentThatLiesOverTheLoadCommands) {
  EXPECT_EQ(refusalOf([](Bytes& file) {
              const std::size_t text = commandAt(file, kSegment) + wordAt(file, commandAt(file, kSegment) + 4);
              setWord(file, text + 72 + 48, 64); // the offset of its first section
            }),
            "it is malformed: a section of segment __TEXT lies over the header or the load commands (arm64)");
}

TEST(MachORefusalTest, ASegmentWithMoreSectionsThanItsCommandHolds) {
  EXPECT_EQ(refusalOf([](Bytes& file) { setWord(file, commandAt(file, kSegment) + 64, 0x10000000); }),
            "it is malformed: load command 1 has no space for its 268435456 sections (arm64)");
}

TEST(MachORefusalTest, ASymbolTableBeyondTheEnd) {
  EXPECT_EQ(refusalOf([](Bytes& file) { setWord(file, commandAt(file, 0x2) + 12, 0xffffffff); }),
            "it is truncated: the symbol table ends beyond its end (arm64)");
}

TEST(MachORefusalTest, AUniversalFileThatIsBroken) {
  const Bytes good = universal({armv7(), executable("host")});
  const auto changed = [&](std::size_t at, std::uint8_t value) {
    Bytes file = good;
    file[at] = value;
    return refusal(file);
  };
  EXPECT_EQ(refusal(View(good).first(20)), "it is truncated: it ends within its list of architectures");
  EXPECT_EQ(refusal(View(good).first(good.size() - 1)), "it is truncated: its part for arm64 ends beyond its end");
  EXPECT_EQ(changed(7, 0), "it is malformed: a universal file without an architecture");
  EXPECT_EQ(changed(18, 0), "it is malformed: its part for armv7 lies over the list of architectures");
  EXPECT_EQ(changed(38, 0x40), "it is malformed: its part for arm64 is made for armv7"); // where the first part is
  EXPECT_EQ(changed(31, 7), "it is malformed: its part for x86_64 is made for arm64");
  EXPECT_EQ(changed(22, 0x70), "it is malformed: its parts for armv7 and arm64 overlap");
}
