// How the delegate ends the process, seen from outside.
#include "support/Child.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Lines = std::vector<std::string>;

/// What an app says that is ended while it launches.
Lines linesOf(const std::string& settings, const std::vector<std::string>& arguments = {}) {
  std::vector<std::string> command = {TERMINATION_HOST};
  command.insert(command.end(), arguments.begin(), arguments.end());
  const ChildResult result =
      runChild(command, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_SETTINGS", settings}});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  Lines lines;
  std::istringstream stream(result.output);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

std::string version(const std::string& number, bool terminateWithSuccess = false) {
  return R"({"systemVersion":")" + number + R"(","terminateWithSuccess":)" + (terminateWithSuccess ? "true" : "false") +
         "}";
}

const Lines kOnALaterTurn = {
    "launched",
    "log 2 exiting application",
    "log 3 -[QVZorbelDelegate applicationWillTerminate]",
    "pasteboard restored",
    "sdk willExit",
    "exit",
};

// 2 is the high one.
const Lines kOnAnotherThread = {
    "global queue of priority 2",
    "log 2 exiting application (other thread)",
    "log 3 -[QVZorbelDelegate applicationWillTerminate] (other thread)",
    "pasteboard restored (other thread)",
    "sdk willExit (other thread)",
    "exit (other thread)",
};

} // namespace

TEST(ProcessEnd, IsThePlatformsOwnOnALaterTurnOfTheMainQueueAndNothingElse) {
  EXPECT_EQ(linesOf(R"({"terminateWithSuccess":true})"),
            (Lines{"launched", "log 2 exiting application", "host applicationWillTerminate:", "exit"}));
}

TEST(ProcessEnd, IsLeftToThePlatformThoughItTakesItsTime) {
  EXPECT_EQ(linesOf(version("17.0"), {"patient"}),
            (Lines{"launched", "log 2 exiting application", "terminateWithSuccess", "ended at last", "exit"}));
}

TEST(ProcessEnd, WithoutThePlatformsOwnTellsTheDelegateThenTheSDKAndExitsWithZero) {
  EXPECT_EQ(linesOf(R"({"terminateWithSuccess":false})"), kOnALaterTurn);
}

TEST(ProcessEnd, WithoutAnSDKExitsAllTheSame) {
  EXPECT_EQ(linesOf(version("17.0"), {"gone"}),
            (Lines{"launched", "log 2 exiting application", "log 3 -[QVZorbelDelegate applicationWillTerminate]",
                   "pasteboard restored", "exit"}));
}

TEST(ProcessEnd, BelowSystemVersionSixTakesAQueueOfHighPriorityAndDoesNotWaitForTheMainThread) {
  EXPECT_EQ(linesOf(version("5.1.1")), kOnAnotherThread);
  EXPECT_EQ(linesOf(version("5.10")), kOnAnotherThread);
  EXPECT_EQ(linesOf(version("4.3", true)),
            (Lines{"global queue of priority 2", "log 2 exiting application (other thread)",
                   "host applicationWillTerminate: (other thread)", "exit (other thread)"}));
}

TEST(ProcessEnd, FromSystemVersionSixOnWaitsForTheMainThread) {
  for (const char* number : {"6.0", "6.0.1", "6.1", "10.0", "17.0"}) {
    EXPECT_EQ(linesOf(version(number)), kOnALaterTurn) << number;
  }
}
