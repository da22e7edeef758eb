// The capture where standard error is no file, or where no file can be made or opened.
#include "LogChild.h"

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>

namespace fs = std::filesystem;

using testing::EndsWith;
using testing::MatchesRegex;
using testing::StartsWith;

namespace {

/// A stop that finds no way back. The reason is whatever the last failed call of the thread had left.
void expectNoWayBack(const Lines& lines) {
  ASSERT_EQ(lines.size(), 8u) << testing::PrintToString(lines);
  EXPECT_EQ(lines[2], "sdk setLoggingToFileSuspended: false");
  EXPECT_EQ(lines[3], "0 Attempted to create a file at nil path.");
  EXPECT_THAT(lines[4], MatchesRegex("0 Error creating file descriptor [0-9]+"));
  EXPECT_EQ(lines[5], "0 Error resetting original STDERR.");
  EXPECT_EQ(lines[6], "standard error: <capture> (deleted)");
  EXPECT_EQ(lines[7], "not started");
}

/// What a process needs to end in good order.
const std::string kManyDescriptors = "descriptors=200";

const Lines kStopAndLook{"stop-deleting", "where", "started"};

/// A path of exactly so many bytes beneath `folder`.
std::string pathOfLength(const std::string& folder, std::size_t length) {
  std::string path = folder;
  while (length - path.size() > 220) {
    path += "/" + std::string(100, 'd');
  }
  fs::create_directories(path);
  return path + "/" + std::string(length - path.size() - 1, 'f');
}

} // namespace

TEST_F(LogCapture, ofAPipeWithoutANameFindsNoWayBackAndLogsThreeLines) {
  expectNoWayBack(run(kStopAndLook));
  EXPECT_EQ(result.errors, "");
}

TEST_F(LogCapture, thatFoundNoWayBackStartsAgainAndFindsNoneAgain) {
  const Lines lines = run({"stop-deleting", "start", "started", "stop-deleting", "started"});
  ASSERT_EQ(lines.size(), 14u) << testing::PrintToString(lines);
  EXPECT_EQ(lines[6], "2 [ZorbelWrapper] Starting logs interception.");
  EXPECT_EQ(lines[7], "sdk setLoggingToFileSuspended: true");
  EXPECT_EQ(lines[8], "started");
  // Where standard error led when the library was loaded is what counts, not where it led at this start.
  EXPECT_EQ(lines[9], "sdk setLoggingToFileSuspended: false");
  EXPECT_EQ(lines[10], "0 Attempted to create a file at nil path.");
  EXPECT_THAT(lines[11], MatchesRegex("0 Error creating file descriptor [0-9]+"));
  EXPECT_EQ(lines[12], "0 Error resetting original STDERR.");
  EXPECT_EQ(lines[13], "not started");
}

TEST_F(LogCapture, ofASocketFindsNoWayBack) {
  expectNoWayBack(run(kStopAndLook, [] {
    std::array<int, 2> ends{};
    socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data());
    dup2(ends[0], STDERR_FILENO);
  }));
}

TEST_F(LogCapture, ofARemovedFileFindsNoWayBackAndDoesNotMakeItAnew) {
  expectNoWayBack(run(kStopAndLook, [this] {
    takeAsStandardError(original);
    unlink(original.c_str());
  }));
  EXPECT_FALSE(fs::exists(original));
  EXPECT_FALSE(fs::exists(original + " (deleted)"));
}

TEST_F(LogCapture, ofAClosedStandardErrorBeginsAllTheSameAndFindsNoWayBack) {
  expectNoWayBack(run(kStopAndLook, [] { close(STDERR_FILENO); }));
}

TEST_F(LogCapture, ofAFileWithAPathOf1023BytesFindsTheWayBack) {
  original = pathOfLength(container + "/Documents", 1023);
  EXPECT_EQ(runIntoFile({"stop-deleting", "where"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "standard error: " + original}));
}

TEST_F(LogCapture, ofAFileWithAPathOf1024BytesOrMoreFindsNoWayBack) {
  for (const std::size_t length : {1024u, 1025u, 2000u}) {
    original = pathOfLength(container + "/Documents", length);
    expectNoWayBack(runIntoFile(kStopAndLook));
  }
}

TEST_F(LogCapture, ofAFileWhosePathIsNotUtf8FindsNoWayBack) {
  original = container + "/Documents/\xff\xfe";
  expectNoWayBack(runIntoFile(kStopAndLook));
}

TEST_F(LogCapture, ofAFileWithBlanksAndOtherAlphabetsInItsPathFindsTheWayBack) {
  original = container + "/Documents/ zwölf %@ %n 日本";
  EXPECT_EQ(runIntoFile({"stop-deleting", "where"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "standard error: " + original}));
}

TEST_F(LogCapture, ofAFileThatIsRemovedMeanwhileMakesItAnewOnTheWayBack) {
  EXPECT_EQ(runIntoFile({"remove=" + original, "stop-deleting", "where", "say=after"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "standard error: " + original, "said"}));
  EXPECT_EQ(content(original), "after\n");
  EXPECT_EQ(fs::status(original).permissions(), static_cast<fs::perms>(0744));
}

TEST_F(LogCapture, ofAPipeWithANameFindsTheWayBack) {
  mkfifo(original.c_str(), 0600);
  const int reading = open(original.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  EXPECT_EQ(runIntoFile({"say=captured", "stop-deleting", "where", "say=after"}),
            afterLoad({"said", "sdk setLoggingToFileSuspended: false", "standard error: " + original, "said"}));
  std::array<char, 100> text{};
  EXPECT_EQ(read(reading, text.data(), text.size()), 6);
  EXPECT_STREQ(text.data(), "after\n");
  close(reading);
}

TEST_F(LogCapture, ofTheNullDeviceAsALaunchedAppHasItFindsTheWayBack) {
  original = "/dev/null";
  EXPECT_EQ(runIntoFile({"say=captured", "stop-keeping", "where", "say=after"}),
            afterLoad({"said", "sdk setLoggingToFileSuspended: false", "standard error: /dev/null", "said"}));
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_EQ(content(captures()[0]), "captured\n");
}

TEST_F(LogCapture, withoutAFolderForItsFileLogsTwoLinesAndLeavesStandardErrorAlone) {
  fs::create_directories(container + "/Library");
  write(container + "/Library/Logs", "in the way");
  const Lines lines = runIntoFile({"where", "started", "say=text"});
  ASSERT_EQ(lines.size(), 7u) << testing::PrintToString(lines);
  EXPECT_EQ(lines[0], "2 [ZorbelWrapper] Starting logs interception.");
  EXPECT_EQ(lines[1], "0 Attempted to create a file at nil path.");
  EXPECT_THAT(lines[2], MatchesRegex("0 Error creating file descriptor [0-9]+"));
  EXPECT_EQ(lines[3], "sdk setLoggingToFileSuspended: true");
  EXPECT_EQ(lines[4], "standard error: " + original);
  EXPECT_EQ(lines[5], "not started");
  EXPECT_EQ(content(original), "text\n");
}

TEST_F(LogCapture, thatCouldNotBeginIsTriedAgainWhenItIsAskedFor) {
  fs::create_directories(container + "/Library");
  write(container + "/Library/Logs", "in the way");
  const Lines lines = runIntoFile({"remove=" + container + "/Library/Logs", "start", "where", "started"});
  EXPECT_EQ(Lines(lines.end() - 4, lines.end()),
            (Lines{"2 [ZorbelWrapper] Starting logs interception.", "sdk setLoggingToFileSuspended: true",
                   "standard error: <capture>", "started"}));
}

TEST_F(LogCapture, thatCouldNotBeginIsStoppedWithTwoLines) {
  fs::create_directories(container + "/Library");
  write(container + "/Library/Logs", "in the way");
  const Lines lines = runIntoFile({"stop-deleting", "where"});
  ASSERT_EQ(lines.size(), 8u) << testing::PrintToString(lines);
  EXPECT_EQ(lines[5], "0 No file streams were found.");
  EXPECT_THAT(lines[6], StartsWith("0 Error removing temporary file "));
  EXPECT_EQ(lines[7], "standard error: " + original);
}

TEST_F(LogCapture, ofAFolderInTheFilesPlaceLogsTheReasonAndLeavesStandardErrorAlone) {
  // EISDIR
  const Lines lines = runIntoFile({"stop-deleting", "log-file=" + container, "start", "where"});
  EXPECT_EQ(Lines(lines.end() - 4, lines.end()),
            (Lines{"2 [ZorbelWrapper] Starting logs interception.", "0 Error creating file descriptor 21",
                   "sdk setLoggingToFileSuspended: true", "standard error: " + original}));
}

TEST_F(LogCapture, whereNoMoreDescriptorsAreToBeHadLogsTheReasonAndLeavesStandardErrorAlone) {
  // EMFILE
  const Lines lines = runIntoFile(
      {"stop-deleting", "log-file=" + container + "/tmp/log", "descriptors=3", "start", "started", kManyDescriptors});
  EXPECT_EQ(Lines(lines.end() - 4, lines.end()),
            (Lines{"2 [ZorbelWrapper] Starting logs interception.", "0 Error creating file descriptor 24",
                   "sdk setLoggingToFileSuspended: true", "started"}));
}

TEST_F(LogCapture, whereNoMoreDescriptorsAreToBeHadFindsNoWayBackAndEndsAllTheSame) {
  EXPECT_EQ(runIntoFile({"descriptors=3", "stop-deleting", "started", "say=text", kManyDescriptors}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "0 Error creating file descriptor 24",
                       "0 Error resetting original STDERR.", "not started", "said"}));
  EXPECT_EQ(content(original), "");
}

TEST_F(LogCapture, thatCannotTakeStandardErrorsPlaceLogsTheReasonAndGivesTheDescriptor) {
  // Descriptor 0 is free and allowed, 2 is not allowed any more: EBADF.
  EXPECT_EQ(runIntoFile({"close=0", "descriptors=2", "replace=" + container + "/tmp/log", kManyDescriptors}),
            afterLoad({"0 Error intercepting file descriptor 9", "descriptor 0"}));
}

TEST_F(LogCapture, onAFullDiskLosesWhatIsSaidAndNothingElse) {
  EXPECT_EQ(runIntoFile({"file-size=0", "say=lost", "log=logged", "stop-keeping", "where"}).size(), 6u);
  EXPECT_EQ(result.status, 0);
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_EQ(content(captures()[0]), "");
}
