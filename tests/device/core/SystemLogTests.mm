// What is said of the app reaches standard error, and whoever follows the trace, once.

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "Child.h"

namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

using Lines = std::vector<std::string>;

/// The starter with its standard output as the trace.
ChildResult traced(const std::string &what, const std::function<void()> &prepare = {}) {
  return runChild({DEVICE_STARTER, what}, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_TRACE_FD", "1"}}, prepare);
}

Lines linesOf(const std::string &text) {
  Lines lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

/// The texts of the trace's records, each of which must be the app's output.
Lines shown(const std::string &trace) {
  Lines texts;
  for (const std::string &line : linesOf(trace)) {
    EXPECT_EQ(line.substr(0, 1), "\x1e") << line;
    const auto record = nlohmann::json::parse(line.substr(1), nullptr, false);
    EXPECT_EQ(record.value("kind", ""), "output") << line;
    texts.push_back(record.value("text", ""));
  }
  return texts;
}

} // namespace

TEST(SystemLog, ShowsWhatTheAppLogsToWhoeverFollowsTheTraceALineEach) {
  const ChildResult result = traced("log");
  EXPECT_THAT(shown(result.output), ElementsAre(EndsWith("] first"), "second"));
  EXPECT_THAT(linesOf(result.errors), ElementsAre(EndsWith("] first"), "second"));
}

TEST(SystemLog, ShowsItOnceWhereTheTraceAndStandardErrorAreTheSame) {
  const ChildResult result = traced("log", [] { ::dup2(STDOUT_FILENO, STDERR_FILENO); });
  EXPECT_THAT(linesOf(result.output), ElementsAre(EndsWith("] first"), "second"));
}

TEST(SystemLog, ShowsItToWhoeverFollowsThoughStandardErrorIsClosed) {
  EXPECT_THAT(shown(traced("log", [] { ::close(STDERR_FILENO); }).output), ElementsAre(EndsWith("] first"), "second"));
}

TEST(SystemLog, GoesToStandardErrorAloneWhenNobodyFollows) {
  const ChildResult result = runStarter({"log"}, {{"QVDEVICE_CONTAINER", freshFolder()}});
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(linesOf(result.errors), ElementsAre(EndsWith("] first"), "second"));
}

TEST(SystemLog, ShowsWhyTheAppWasEnded) {
  const std::string uncaught = "*** Terminating app due to uncaught exception 'Odd', reason: 'odd 1'";
  const ChildResult raised = traced("raise");
  EXPECT_EQ(raised.status, 134);
  EXPECT_THAT(shown(raised.output), ElementsAre(uncaught));
  EXPECT_EQ(raised.errors, uncaught + "\n");
  EXPECT_THAT(shown(traced("weak-to-the-dying").output), ElementsAre(HasSubstr("Cannot form weak reference")));
  EXPECT_THAT(shown(traced("sync-on-itself").output), ElementsAre(HasSubstr("BUG IN CLIENT OF LIBDISPATCH")));
}
