// Each way in which an archive can be broken or hostile.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppArchive.h"
#include "Archives.h"
#include "Failure.h"

using namespace inputs;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// The sentence with which an archive is refused; empty when it is not.
std::string refusal(View file) {
  try {
    const qvwrap::AppArchive app(file, "Notes.ipa", [](const qvwrap::ZipResult&) {});
    return "";
  } catch (const qvwrap::Failure& failure) {
    EXPECT_EQ(failure.status(), qvwrap::kRefused);
    return failure.what();
  }
}

std::string refusalOf(const std::vector<Packed>& entries) { return refusal(archiveOf(entries)); }

/// The app with one more entry.
std::vector<Packed> with(const Packed& entry) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries.push_back(entry);
  return entries;
}

constexpr int kInfo = 2;
constexpr int kExecutable = 3;

} // namespace

TEST(ArchiveRefusalTest, AGoodArchiveIsNotRefused) { EXPECT_EQ(refusalOf(packedApp(executable("host"))), ""); }

TEST(ArchiveRefusalTest, WhatIsNoArchive) {
  EXPECT_EQ(refusal({}), "it is no app: neither a folder nor a zip archive");
  EXPECT_EQ(refusal(executable("host")), "it is no app: neither a folder nor a zip archive");
}

TEST(ArchiveRefusalTest, EveryTruncation) {
  const Bytes file = archiveOf(packedApp(executable("host")));
  EXPECT_EQ(refusal(View(file).first(file.size() - 1)), "the archive is truncated: it has no end record");
  for (std::size_t size = 4; size < file.size(); ++size) {
    ASSERT_EQ(refusal(View(file).first(size)), "the archive is truncated: it has no end record") << size;
  }
}

TEST(ArchiveRefusalTest, BytesBehindTheEnd) {
  Bytes file = archiveOf(packedApp(executable("host")));
  file.push_back(0);
  EXPECT_EQ(refusal(file), "the archive is truncated: it has no end record");
}

TEST(ArchiveRefusalTest, NamesThatLeadOutOfTheArchive) {
  for (const char* name : {"../x", "Payload/../../x", "/etc/passwd", "Payload\\x", "Payload/..", "Payload//x", "./x"}) {
    EXPECT_EQ(refusalOf(with({.name = name, .content = {1}})),
              std::string("the archive holds an entry whose name leads out of it or is none: \"") + name + "\"");
  }
  EXPECT_THAT(refusalOf(with({.name = std::string("Payload/x\0y", 11), .content = {1}})),
              StartsWith("the archive holds an entry whose name leads out of it or is none"));
  EXPECT_EQ(refusalOf(with({.name = "Payload/..x/x..", .content = {1}})), "");
}

TEST(ArchiveRefusalTest, NamesThatStandInItTwice) {
  EXPECT_EQ(refusalOf(with({.name = "Payload/Notes.app/Notes", .content = {1}})),
            "the archive holds \"Payload/Notes.app/Notes\" twice");
  EXPECT_EQ(refusalOf(with({.name = "Payload/Notes.app/Notes/", .content = {}})),
            "the archive holds \"Payload/Notes.app/Notes/\" twice");
}

TEST(ArchiveRefusalTest, EntriesThatOverlap) {
  const long place = static_cast<long>(archiveOf({packedApp({})[0], packedApp({})[1]}).size()) - 22 - 2 * 46 - 8 - 18;
  Packed again = packedApp({})[kInfo];
  again.local = place;
  std::vector<Packed> entries = packedApp(executable("host"));
  again.name = entries[kInfo].name + "2";
  entries[kInfo].localName = again.name;
  entries.push_back(again);
  entries[kInfo].localName = "";
  EXPECT_EQ(refusalOf(entries), "the archive is malformed: \"Payload/Notes.app/Info.plist2\" has another name in the "
                                "directory than at its place");

  // Zeros, so that a second header may lie in the data of the first.
  Packed outer{.name = "Payload/a",
               .content = archiveOf({{.name = "Payload/b", .content = {1, 2, 3}, .deflated = false}}),
               .deflated = false};
  const std::size_t before = archiveOf(packedApp(executable("host"))).size();
  std::vector<Packed> nested = with(outer);
  const Bytes whole = archiveOf(nested);
  const std::string name = "Payload/b";
  const auto inner = std::search(whole.begin(), whole.end(), name.begin(), name.end()) - whole.begin() - 30;
  ASSERT_LT(static_cast<std::size_t>(inner), whole.size());
  ASSERT_GT(before, 0U);
  nested.push_back({.name = "Payload/b", .content = {1, 2, 3}, .deflated = false, .local = static_cast<long>(inner)});
  EXPECT_EQ(refusalOf(nested), "the archive is malformed: \"Payload/a\" and \"Payload/b\" overlap");
}

TEST(ArchiveRefusalTest, AnEntryThatIsNotWhereTheDirectorySays) {
  for (const long place : {1L, 100000000L}) {
    EXPECT_EQ(refusalOf(with({.name = "Payload/x", .content = {1}, .local = place})),
              "the archive is malformed: \"Payload/x\" is not where the directory says");
  }
}

TEST(ArchiveRefusalTest, AnotherNameAtTheEntrysPlace) {
  EXPECT_EQ(refusalOf(with({.name = "Payload/x", .content = {1}, .localName = "Payload/y"})),
            "the archive is malformed: \"Payload/x\" has another name in the directory than at its place");
}

TEST(ArchiveRefusalTest, ADirectoryThatIsBroken) {
  const Bytes good = archiveOf(packedApp(executable("host")));
  const std::size_t end = good.size() - 22;
  const auto changed = [&](std::size_t at, std::uint32_t value) {
    Bytes file = good;
    setWord(file, at, value);
    return refusal(file);
  };
  EXPECT_EQ(changed(end + 12, 1), "the archive is malformed: its directory does not lie where its end record says");
  EXPECT_EQ(changed(end + 16, 0x7fffffff),
            "the archive is malformed: its directory does not lie where its end record says");
  EXPECT_EQ(changed(end + 8, 6 << 16 | 6), "the archive is malformed: its directory ends before its last entry");
  EXPECT_EQ(changed(end + 8, 4 << 16 | 4),
            "the archive is malformed: its directory holds more than its end record says");
  EXPECT_EQ(changed(end + 4, 1), "the archive is one of several parts");
  EXPECT_EQ(changed(wordAt(good, end + 16), 0), "the archive is malformed: its directory ends before its last entry");
  EXPECT_EQ(changed(end + 16, 0xffffffff),
            "the archive is larger than 4 GiB or 65534 entries (zip64), which qvwrap does not handle");
}

TEST(ArchiveRefusalTest, NoApp) {
  EXPECT_EQ(refusalOf({{.name = "Payload/", .content = {}}, {.name = "Payload/Notes.app", .content = {1}}}),
            "the archive holds no app: there is no Payload/NAME.app in it");
  EXPECT_EQ(refusalOf({{.name = "Notes.app/Info.plist", .content = {1}}}),
            "the archive holds no app: there is no Payload/NAME.app in it");
  EXPECT_EQ(refusalOf({{.name = "Payload/.app/Info.plist", .content = {1}}}),
            "the archive holds no app: there is no Payload/NAME.app in it");
}

TEST(ArchiveRefusalTest, SeveralApps) {
  EXPECT_EQ(refusalOf(with({.name = "Payload/Other.app/Info.plist", .content = {1}})),
            "the archive holds several apps: Payload/Notes.app/, Payload/Other.app/");
}

TEST(ArchiveRefusalTest, NoInfoPlist) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries.erase(entries.begin() + kInfo);
  EXPECT_EQ(refusalOf(entries), "it is no app: it holds no Info.plist");
}

TEST(ArchiveRefusalTest, AnExecutableOutsideOfTheAppOrNotThere) {
  std::vector<Packed> entries = packedApp(executable("host"));
  for (const auto& [name, sentence] :
       {std::pair("../../x", "its Info.plist names an executable outside of the app: ../../x"),
        std::pair("Note", "it does not hold its executable, Note")}) {
    const std::string info = infoPlist(name);
    entries[kInfo].content = {info.begin(), info.end()};
    EXPECT_EQ(refusalOf(entries), sentence);
  }
}

TEST(ArchiveRefusalTest, LinksWhereFilesBelong) {
  for (const int which : {kInfo, kExecutable}) {
    std::vector<Packed> entries = packedApp(executable("host"));
    entries[static_cast<std::size_t>(which)].mode = 0120755;
    EXPECT_THAT(refusalOf(entries), testing::EndsWith("in the archive is a symbolic link, not a file"));
  }
  EXPECT_EQ(refusalOf(with({.name = "Payload/Notes.app/Frameworks", .content = {'/'}, .mode = 0120755})),
            "its Frameworks is no folder");
}

TEST(ArchiveRefusalTest, AnExecutableWithAPassword) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries[kExecutable].flags = 1;
  EXPECT_EQ(refusalOf(entries), "\"Payload/Notes.app/Notes\" in the archive is encrypted with a password");
}

TEST(ArchiveRefusalTest, AMethodOfCompressionThatIsNotKnown) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries[kExecutable].method = 14;
  EXPECT_EQ(refusalOf(entries),
            "\"Payload/Notes.app/Notes\" in the archive is compressed by method 14; only stored and "
            "deflated entries can be read");
}

TEST(ArchiveRefusalTest, ContentThatIsDamaged) {
  const std::string sentence =
      "\"Payload/Notes.app/Notes\" in the archive is damaged: it does not unpack to what the directory says";
  std::vector<Packed> entries = packedApp(executable("host"));
  entries[kExecutable].checksum = 1;
  EXPECT_EQ(refusalOf(entries), sentence);
  entries = packedApp(executable("host"));
  entries[kExecutable].stream = {7, 7, 7, 7};
  EXPECT_EQ(refusalOf(entries), sentence);
  entries = packedApp(executable("host"));
  entries[kExecutable].deflated = false;
  entries[kExecutable].size = 5;
  EXPECT_EQ(refusalOf(entries), sentence);
}

TEST(ArchiveRefusalTest, AnEntryThatUnpacksToMoreThanItSaysIsGivenUpEarly) {
  const Bytes zeros(std::size_t{64} << 20);
  std::vector<Packed> entries = packedApp(executable("host"));
  entries[kExecutable].content = zeros;
  entries[kExecutable].size = 1000;
  EXPECT_EQ(refusalOf(entries),
            "\"Payload/Notes.app/Notes\" in the archive is damaged: it does not unpack to what the directory says");
}

TEST(ArchiveRefusalTest, AnEntryThatSaysItIsHugeIsNotUnpacked) {
  std::vector<Packed> entries = packedApp(executable("host"));
  entries[kExecutable].size = 0x7fffffff;
  EXPECT_EQ(refusalOf(entries), "\"Payload/Notes.app/Notes\" in the archive is larger than 1024 MiB");
  entries = packedApp(executable("host"));
  entries[kInfo].size = 0x7fffffff;
  EXPECT_EQ(refusalOf(entries), "\"Payload/Notes.app/Info.plist\" in the archive is larger than 16 MiB");
}

TEST(ArchiveRefusalTest, AnEntryOf4GiB) {
  EXPECT_EQ(refusalOf(with({.name = "Payload/x", .content = {1}, .size = 0xffffffff})),
            "the archive holds an entry of 4 GiB or more (zip64), which qvwrap does not handle");
}
