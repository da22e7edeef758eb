// The capture of standard error, from load on, step by step: texts, files and descriptors.
#include "LogChild.h"

#include <gmock/gmock.h>

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::MatchesRegex;

TEST_F(LogCapture, startsAtLoadAndLeavesNothingOfStandardErrorWhereItWentBefore) {
  EXPECT_EQ(runIntoFile({"where", "started", "say=captured"}),
            afterLoad({"standard error: <capture>", "started", "said"}));
  EXPECT_EQ(content(original), "");
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_EQ(content(captures()[0]), "captured\n");
}

TEST_F(LogCapture, comesBeforeTheLibrarysFirstLine) {
  runIntoFile({});
  const std::size_t capture = result.output.find("Starting logs interception.");
  const std::size_t start = result.output.find("Sandboxing application");
  ASSERT_NE(capture, std::string::npos);
  ASSERT_NE(start, std::string::npos);
  EXPECT_LT(capture, start);
}

TEST_F(LogCapture, isInAFileNamedSandboxWithTheDateAmongTheSdksLogs) {
  runIntoFile({});
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_THAT(captures()[0], MatchesRegex(logs() + "/sandbox_[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}-[0-9]{2}-[0-9]{2}"
                                                   "\\.[0-9]{3}Z\\.log"));
}

TEST_F(LogCapture, thatIsLoadedAgainIsNotBegunAgain) {
  EXPECT_EQ(runIntoFile({"load", "stop-keeping", "load", "where"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "standard error: " + original}));
  EXPECT_EQ(captures().size(), 1u);
}

TEST_F(LogCapture, startedASecondTimeLogsSoAndChangesNothing) {
  EXPECT_EQ(runIntoFile({"opened", "start", "opened", "where", "started"}),
            afterLoad({"open: <capture>", "0 Attempted to replace STDERR output twice.", "open: <capture>",
                       "standard error: <capture>", "started"}));
  EXPECT_EQ(captures().size(), 1u);
}

TEST_F(LogCapture, stoppedWithoutKeepingPutsStandardErrorBackAndRemovesTheFile) {
  write(original, "before\n");
  EXPECT_EQ(runIntoFile({"say=captured", "stop-deleting", "where", "started", "say=after"}),
            afterLoad({"said", "sdk setLoggingToFileSuspended: false", "standard error: " + original, "not started",
                       "said"}));
  EXPECT_EQ(content(original), "before\nafter\n");
  EXPECT_EQ(captures().size(), 0u);
}

TEST_F(LogCapture, stoppedKeepingTheFilePutsStandardErrorBackAndCountsAsStartedStill) {
  write(original, "before\n");
  EXPECT_EQ(
      runIntoFile({"say=captured", "stop-keeping", "where", "started", "say=after"}),
      afterLoad({"said", "sdk setLoggingToFileSuspended: false", "standard error: " + original, "started", "said"}));
  EXPECT_EQ(content(original), "before\nafter\n");
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_EQ(content(captures()[0]), "captured\n");
}

TEST_F(LogCapture, stoppedAndStartedAgainUsesANewFile) {
  EXPECT_EQ(runIntoFile({"say=one", "stop-deleting", "start", "say=two", "where", "started"}),
            afterLoad({"said", "sdk setLoggingToFileSuspended: false", "2 [ZorbelWrapper] Starting logs interception.",
                       "sdk setLoggingToFileSuspended: true", "said", "standard error: <capture>", "started"}));
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_EQ(content(captures()[0]), "two\n");
}

TEST_F(LogCapture, stoppedAfterTheFileWasKeptOnlyLogsThatThereIsNothingToStop) {
  EXPECT_EQ(runIntoFile({"stop-keeping", "stop-keeping", "started", "where"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "sdk setLoggingToFileSuspended: false",
                       "0 No file streams were found.", "started", "standard error: " + original}));
  EXPECT_EQ(captures().size(), 1u);
}

TEST_F(LogCapture, stoppedWithoutKeepingAfterTheFileWasKeptRemovesIt) {
  EXPECT_EQ(runIntoFile({"stop-keeping", "stop-deleting", "started"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "sdk setLoggingToFileSuspended: false",
                       "0 No file streams were found.", "not started"}));
  EXPECT_EQ(captures().size(), 0u);
}

TEST_F(LogCapture, stoppedWithoutKeepingWhenThereIsNoFileTriesToRemoveItAllTheSame) {
  const Lines lines = runIntoFile({"stop-deleting", "stop-deleting", "started"});
  ASSERT_EQ(lines.size(), 7u) << testing::PrintToString(lines);
  EXPECT_EQ(lines[4], "0 No file streams were found.");
  EXPECT_THAT(lines[5], testing::StartsWith("0 Error removing temporary file "));
  EXPECT_EQ(lines[6], "not started");
}

TEST_F(LogCapture, whoseFileIsGoneAlreadyLogsWhyItCannotBeRemovedAndForgetsIt) {
  const Lines lines = runIntoFile({"remove=" + logs(), "stop-deleting", "started", "where"});
  ASSERT_EQ(lines.size(), 6u) << testing::PrintToString(lines);
  EXPECT_THAT(lines[3], MatchesRegex("0 Error removing temporary file “sandbox_[-0-9TZ.]+log” couldn’t be removed."));
  EXPECT_EQ(lines[4], "not started");
  EXPECT_EQ(lines[5], "standard error: " + original);
}

TEST_F(LogCapture, leavesOneMoreDescriptorOpenWithEachStartAndEachStop) {
  EXPECT_EQ(
      runIntoFile({"opened", "stop-keeping", "opened", "start", "opened"}),
      afterLoad({"open: <capture>", "sdk setLoggingToFileSuspended: false", "open: <capture>", "open: " + original,
                 "2 [ZorbelWrapper] Starting logs interception.", "sdk setLoggingToFileSuspended: true",
                 "open: <capture>", "open: " + original, "open: <capture>"}));
}

TEST_F(LogCapture, intoTheFileThatStandardErrorLeadsToAnywayCountsAsNotStarted) {
  EXPECT_EQ(runIntoFile({"stop-deleting", "log-file=" + original, "start", "started", "where", "say=text"}),
            afterLoad({"sdk setLoggingToFileSuspended: false", "2 [ZorbelWrapper] Starting logs interception.",
                       "sdk setLoggingToFileSuspended: true", "not started", "standard error: " + original, "said"}));
  EXPECT_EQ(content(original), "text\n");
}

TEST_F(LogCapture, keepsNoLineFromWhoeverFollowsTheDevicesLog) {
  const Lines lines = runIntoFile({"log=logged", "stop-keeping", "log=after"});
  ASSERT_EQ(lines.size(), 5u) << testing::PrintToString(lines);
  EXPECT_THAT(lines[2], testing::EndsWith("] logged"));
  EXPECT_THAT(lines[4], testing::EndsWith("] after"));
  ASSERT_EQ(captures().size(), 1u);
  EXPECT_THAT(content(captures()[0]), testing::EndsWith("] logged\n"));
  EXPECT_THAT(content(original), testing::EndsWith("] after\n"));
}

TEST_F(LogCapture, ofManyRunsKeepsTenFiles) {
  Lines words;
  for (int i = 0; i < 14; ++i) {
    words.insert(words.end(), {"stop-keeping", "start"});
  }
  runIntoFile(words);
  EXPECT_EQ(captures().size(), 10u);
}
