// Events files, refused before the app starts: none of these tests has an app that could run.
#include "Program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::StartsWith;

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
  EXPECT_EQ(refusal("dictat x"), "1:1: there is no event \"dictat\"; did you mean \"dictate\"?\n");
  EXPECT_EQ(refusal("end"), "1:1: there is no event \"end\"; did you mean \"ends\"?\n");
  EXPECT_EQ(refusal("Resign"), "1:1: there is no event \"Resign\"; did you mean \"resign\"?\n");
}

TEST(Events, withAWaitThatIsNoNumberOfMillisecondsAreRefused) {
  EXPECT_EQ(refusal("wait"), "1:5: wait needs milliseconds, a whole number up to 600000\n");
  EXPECT_EQ(refusal("wait soon"), "1:6: wait needs milliseconds, a whole number up to 600000; \"soon\" is none\n");
  EXPECT_EQ(refusal("wait -1"), "1:6: wait needs milliseconds, a whole number up to 600000; \"-1\" is none\n");
  EXPECT_EQ(refusal("wait 10ms"), "1:6: wait needs milliseconds, a whole number up to 600000; \"10ms\" is none\n");
  EXPECT_EQ(refusal("wait 600001"), "1:6: wait needs milliseconds, a whole number up to 600000; \"600001\" is none\n");
}

TEST(Events, withAPolicyThatTheSdkWouldRefuseAreRefusedAtItsKeyBeforeTheAppStarts) {
  EXPECT_EQ(refusal("set"), "1:4: set needs a key of the policies and its value in JSON\n");
  EXPECT_EQ(refusal("set ready # true"), "1:10: set ready needs a value in JSON\n");
  EXPECT_EQ(refusal("\nset  printPolcy 1"), "2:6: unknown key \"printPolcy\"; did you mean \"printPolicy\"?\n");
  EXPECT_EQ(refusal("set ready 1"), "1:5: ready must be true or false, not the number 1\n");
  EXPECT_EQ(refusal("set openInWhitelist [\"a\", 2]"),
            "1:5: openInWhitelist must be an array of strings, not an array with the number 2 in it\n");
}

TEST(Events, withAValueThatIsNotJsonAreRefusedWhereItStopsBeingIt) {
  EXPECT_THAT(refusal("set config {\"a\": tru}"), StartsWith("1:21: not JSON: "));
  EXPECT_THAT(refusal("set config {\"a\": \"b}"), StartsWith("1:21: not JSON: "));
  EXPECT_THAT(refusal("set config {\"a\": 1"), StartsWith("1:19: not JSON: "));
  EXPECT_THAT(refusal("set authState one"), StartsWith("1:15: not JSON: "));
  EXPECT_THAT(refusal("set authState }"), StartsWith("1:15: not JSON: "));
  EXPECT_EQ(refusal("set authState 1e999"), "1:15: there is a number in it that is too large\n");
}

TEST(Events, withAMessageThatIsNoStringOrThatNobodyWouldReadAreRefusedAtIt) {
  EXPECT_EQ(refusal("set authState 0 5"), "1:17: the message must be a string in JSON, in quotes\n");
  EXPECT_THAT(refusal("set authState 0 Goodbye"), StartsWith("1:17: not JSON: "));
  EXPECT_EQ(refusal("set printPolicy 0 \"Goodbye\""), "1:19: only authState has a message\n");
  EXPECT_EQ(refusal("set authState 0 \"a\" \"b\""), "1:21: \"\"b\"\" is too much after set\n");
}

TEST(Events, withoutAUrlToOpenOrWithAnOddSourceAreRefused) {
  EXPECT_EQ(refusal("open"), "1:5: open needs a URL with a scheme\n");
  EXPECT_EQ(refusal("open notes"), "1:6: open needs a URL with a scheme; \"notes\" is none\n");
  EXPECT_EQ(refusal("open ://notes"), "1:6: open needs a URL with a scheme; \"://notes\" is none\n");
  EXPECT_EQ(refusal("open 1a://notes"), "1:6: open needs a URL with a scheme; \"1a://notes\" is none\n");
  EXPECT_EQ(refusal("open a://b form com.c"),
            "1:12: \"form\" is too much after the URL, unless it is \"from\" and a bundle identifier\n");
  EXPECT_EQ(refusal("open a://b from"), "1:16: from needs the bundle identifier of the app that asks\n");
  EXPECT_EQ(refusal("open a://b from com.c now"), "1:23: \"now\" is too much after open\n");
}

TEST(Events, withATouchAtHalfAPlaceAreRefused) {
  EXPECT_EQ(refusal("touch 1"), "1:8: touch needs no place or two numbers, X and Y\n");
  EXPECT_EQ(refusal("touch 1 b"), "1:9: touch needs no place or two numbers, X and Y; \"b\" is none\n");
  EXPECT_EQ(refusal("touch inf 1"), "1:7: touch needs no place or two numbers, X and Y; \"inf\" is none\n");
  EXPECT_EQ(refusal("touch 1 2 3"), "1:11: \"3\" is too much after touch\n");
}

TEST(Events, withNothingToTapToTypeOrToDictateAreRefused) {
  EXPECT_EQ(refusal("tap"), "1:4: tap needs a button's title\n");
  EXPECT_EQ(refusal("tap \"\""), "1:5: tap needs a button's title\n");
  EXPECT_EQ(refusal("type #1"), "1:5: type needs a text\n");
  EXPECT_EQ(refusal("dictate "), "1:8: dictate needs a text\n");
  EXPECT_EQ(refusal("choose "), "1:7: choose needs what is to be chosen\n");
  EXPECT_EQ(refusal("menu x"), "1:6: \"x\" is too much after menu\n");
  EXPECT_THAT(refusal("type \"a"), StartsWith("1:8: not JSON: "));
  EXPECT_EQ(refusal("type \"a\" b"), "1:10: \"b\" is too much after type\n");
}

TEST(Events, withAnActionThatIsNoSelectorAreRefused) {
  EXPECT_EQ(refusal("perform"), "1:8: perform needs a selector, as in copy:\n");
  EXPECT_EQ(refusal("perform -copy:"), "1:9: perform needs a selector, as in copy:; \"-copy:\" is none\n");
  EXPECT_EQ(refusal("perform :"), "1:9: perform needs a selector, as in copy:; \":\" is none\n");
}

TEST(Events, thatTakeNothingAreRefusedWithSomething) {
  EXPECT_EQ(refusal("keyboard normal"), "1:10: keyboard needs nothing or one word (show, hide); \"normal\" is none\n");
  EXPECT_EQ(refusal("ends now"), "1:6: \"now\" is too much after ends\n");
}

TEST(Events, thatAreNotUtf8AreRefused) { EXPECT_EQ(refusal("wait 1\ntype \xff"), "2:1: this line is not UTF-8\n"); }

TEST(Events, withMoreThanOneOnALineAreRefusedAtTheSecond) {
  EXPECT_EQ(refusal("resign background # both"), "1:8: \"background\" is too much after resign\n");
}

TEST(Events, afterTheEndOfTheAppAreRefused) {
  EXPECT_EQ(refusal("terminate\nresign\n"), "2:1: nothing happens to an app after terminate\n");
  EXPECT_EQ(refusal("ends\nterminate\n"), "2:1: nothing happens to an app after ends\n");
}

TEST(Events, fromAFileThatIsNotThereAreRefused) {
  const Ended ended = qvdevice({"run", "--events", "/nowhere/events", NOTES_APP});
  EXPECT_EQ(ended.status, 66);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.err, "qvdevice: the events file /nowhere/events cannot be read\n");
}

TEST(Events, ofWindowsAndTheSdkThatAreIncompleteOrWrongAreRefused) {
  EXPECT_EQ(refusal("window"), "1:7: window needs what happens to it (show, key, hide, close)\n");
  EXPECT_EQ(refusal("window shut A"),
            "1:8: window needs what happens to it (show, key, hide, close); \"shut\" is none\n");
  EXPECT_EQ(refusal("window key"), "1:11: window key needs the window's name\n");
  EXPECT_EQ(refusal("window show A high"),
            "1:15: a window's level is a number, normal, statusBar or alert; \"high\" is none\n");
  EXPECT_EQ(refusal("window show A inf"),
            "1:15: a window's level is a number, normal, statusBar or alert; \"inf\" is none\n");
  EXPECT_EQ(refusal("window close A 3"), "1:16: \"3\" is too much after window\n");
  EXPECT_EQ(refusal("windows A"), "1:9: \"A\" is too much after windows\n");
  EXPECT_EQ(refusal("alert"), "1:6: alert needs a title\n");
  EXPECT_EQ(refusal("rotate left"),
            "1:8: rotate needs the way in which the device is held (portrait, portraitUpsideDown, landscapeLeft, "
            "landscapeRight, faceUp, faceDown); \"left\" is none\n");
  EXPECT_EQ(refusal("await"), "1:6: await needs a call at the SDK, as in displayMessage:\n");
  EXPECT_EQ(refusal("await 2 calls"), "1:7: await needs a call at the SDK, as in displayMessage:; \"2\" is none\n");
  EXPECT_EQ(refusal("authenticate me"), "1:14: \"me\" is too much after authenticate\n");
  EXPECT_EQ(refusal("ask"), "1:4: ask needs a question (isPasscodeExtensionActive, canAppDisplayPasscodeExtension)\n");
}

} // namespace
