// Events files, refused before the app starts: none of these tests has an app that could run.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

/// What `qvdevice run` says to an events file of this text, without the file's path.
std::string refusal(const std::string& text) {
  const WorkFolder folder;
  const std::string file = folder.write("events", text);
  const Ended ended = qvdevice({"run", "--events", file, NOTES_APP});
  EXPECT_EQ(ended.status, 65);
  EXPECT_EQ(ended.out, "") << "the app was started";
  const std::string start = "qvdevice: " + file + ":";
  EXPECT_TRUE(ended.err.starts_with(start)) << ended.err;
  return ended.err.starts_with(start) ? ended.err.substr(start.size()) : ended.err;
}

TEST(Events, withATypoAreRefusedWithLineColumnAndTheNearestEvent) {
  EXPECT_EQ(refusal("resign\n  backgruond\n"), "2:3: there is no event \"backgruond\"; did you mean \"background\"?\n");
  EXPECT_EQ(refusal("# a comment\n\nterminat"), "3:1: there is no event \"terminat\"; did you mean \"terminate\"?\n");
  EXPECT_EQ(refusal("Resign"), "1:1: there is no event \"Resign\"; did you mean \"resign\"?\n");
}

TEST(Events, withAWaitThatIsNoNumberOfMillisecondsAreRefused) {
  EXPECT_EQ(refusal("wait"), "1:5: wait needs milliseconds, a whole number up to 600000\n");
  EXPECT_EQ(refusal("wait soon"), "1:6: wait needs milliseconds, a whole number up to 600000; \"soon\" is none\n");
  EXPECT_EQ(refusal("wait -1"), "1:6: wait needs milliseconds, a whole number up to 600000; \"-1\" is none\n");
  EXPECT_EQ(refusal("wait 10ms"), "1:6: wait needs milliseconds, a whole number up to 600000; \"10ms\" is none\n");
  EXPECT_EQ(refusal("wait 600001"), "1:6: wait needs milliseconds, a whole number up to 600000; \"600001\" is none\n");
}

TEST(Events, withMoreThanOneOnALineAreRefusedAtTheSecond) {
  EXPECT_EQ(refusal("resign background # both"), "1:8: \"background\" is too much after resign\n");
}

TEST(Events, afterTheEndOfTheAppAreRefused) {
  EXPECT_EQ(refusal("terminate\nresign\n"), "2:1: nothing happens to an app after terminate\n");
}

TEST(Events, fromAFileThatIsNotThereAreRefused) {
  const Ended ended = qvdevice({"run", "--events", "/nowhere/events", NOTES_APP});
  EXPECT_EQ(ended.status, 66);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "qvdevice: the events file /nowhere/events cannot be read\n");
}

} // namespace
