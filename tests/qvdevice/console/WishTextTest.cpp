// What a request's body may hold, and what is said of any other.
#include "WishText.h"

#include <gtest/gtest.h>

#include "Failure.h"

namespace {

using qvdevice::Event;
using qvdevice::Wishes;
using Kind = Wishes::Kind;

std::string refusalOf(std::string_view path, const std::string& body) {
  try {
    qvdevice::wishIn(path, body);
  } catch (const qvdevice::Failure& failure) {
    return failure.what();
  }
  return "taken";
}

TEST(WishText, isAnEventAsInAnEventsFile) {
  const auto wish = qvdevice::wishIn("/events", R"({"event": "set authState 0 \"Good \\\"bye\\\"\""})");
  EXPECT_EQ(wish.kind, Kind::kEvent);
  EXPECT_EQ(wish.event->command.dump(), R"({"do":"set","values":{"authState":0},"message":"Good \"bye\""})");
}

TEST(WishText, mayBeForTheExtensionAndTheAppsEnd) {
  EXPECT_EQ(qvdevice::wishIn("/events", R"({"event": "extension tap 1"})").event->kind, Event::Kind::kExtension);
  EXPECT_EQ(qvdevice::wishIn("/events", R"({"event": "terminate"})").event->kind, Event::Kind::kTerminate);
}

TEST(WishText, mayBeWithoutAnEvent) {
  EXPECT_EQ(qvdevice::wishIn("/relaunch", "{}").kind, Kind::kRelaunch);
  EXPECT_EQ(qvdevice::wishIn("/quit", "{}").kind, Kind::kQuit);
}

TEST(WishText, withATypoIsRefusedWithTheNearestEvent) {
  EXPECT_EQ(refusalOf("/events", R"({"event": "tpa Share"})"),
            "column 1: there is no event \"tpa\"; did you mean \"tap\"?");
  EXPECT_EQ(refusalOf("/events", R"({"event": "set printPolcy 1"})"),
            "column 5: unknown key \"printPolcy\"; did you mean \"printPolicy\"?");
}

TEST(WishText, thatIsNoJsonIsRefusedWithThePlace) {
  EXPECT_EQ(
      refusalOf("/events", R"({"event": )"),
      "the request is not JSON: at line 1, column 11: syntax error while parsing value - unexpected end of input; "
      "expected '[', '{', or a literal");
  EXPECT_NE(refusalOf("/events", "").find("the request is not JSON: at line 1, column 1"), std::string::npos);
  EXPECT_NE(refusalOf("/events", "{\"event\": \"\xff\"}").find("the request is not JSON: "), std::string::npos);
}

TEST(WishText, ofAnotherFormIsRefused) {
  const char* const form = "the request must be {\"event\": a line as in an events file}";
  EXPECT_EQ(refusalOf("/events", "[]"), "the request must be a JSON object");
  EXPECT_EQ(refusalOf("/events", "\"tap Share\""), "the request must be a JSON object");
  EXPECT_EQ(refusalOf("/events", "{}"), form);
  EXPECT_EQ(refusalOf("/events", R"({"event": 1})"), form);
  EXPECT_EQ(refusalOf("/events", R"({"event": "menu", "more": 1})"), form);
  EXPECT_EQ(refusalOf("/quit", R"({"event": "menu"})"), "the request must be an empty JSON object");
}

TEST(WishText, thatIsNotOneEventIsRefused) {
  EXPECT_EQ(refusalOf("/events", R"({"event": ""})"), "column 1: there is no event here");
  EXPECT_EQ(refusalOf("/events", R"({"event": "  # menu"})"), "column 1: there is no event here");
  EXPECT_EQ(refusalOf("/events", R"({"event": "menu\nmenu"})"), "column 5: an event is one line");
  EXPECT_EQ(refusalOf("/events", R"({"event": "menu menu"})"), "column 6: \"menu\" is too much after menu");
}

TEST(WishText, thatWaitsIsForFilesOnly) {
  for (const char* event : {"wait 10", "screen", "refused menu", "await displayMessage:", "ends", "chapter One"}) {
    EXPECT_NE(refusalOf("/events", std::string(R"({"event": ")") + event + "\"}").find("\" is for events files: here"),
              std::string::npos)
        << event;
  }
}

TEST(WishText, isSentToThreePathsAlone) {
  EXPECT_TRUE(qvdevice::isWish("/events"));
  EXPECT_TRUE(qvdevice::isWish("/relaunch"));
  EXPECT_TRUE(qvdevice::isWish("/quit"));
  EXPECT_FALSE(qvdevice::isWish("/"));
  EXPECT_FALSE(qvdevice::isWish("/events/"));
}

} // namespace
