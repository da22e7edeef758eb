// What an app is told for each event of a file.
#include "Events.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace {

using qvdevice::Event;
using Kind = Event::Kind;

std::vector<Event> eventsOf(const std::string& text) {
  std::string folder = std::filesystem::temp_directory_path() / "qvdevice-test.XXXXXX";
  EXPECT_NE(mkdtemp(folder.data()), nullptr);
  const std::string file = folder + "/events";
  std::ofstream(file) << text;
  const std::vector<Event> events = qvdevice::readEvents(file);
  std::filesystem::remove_all(folder);
  return events;
}

/// The command of a file's one event.
std::string commandOf(const std::string& text) {
  const std::vector<Event> events = eventsOf(text);
  EXPECT_EQ(events.size(), 2u) << text;
  EXPECT_EQ(events[0].kind, Kind::kCommand) << text;
  return events[0].command.dump();
}

TEST(Event, thatIsAStepOfTheAppsLifeIsAVerb) {
  EXPECT_EQ(commandOf("activate"), R"({"do":"becomeActive"})");
  EXPECT_EQ(commandOf("resign"), R"({"do":"resignActive"})");
  EXPECT_EQ(commandOf("background"), R"({"do":"enterBackground"})");
  EXPECT_EQ(commandOf("foreground"), R"({"do":"enterForeground"})");
  EXPECT_EQ(commandOf("keyboard"), R"({"do":"keyboard"})");
  EXPECT_EQ(commandOf("menu"), R"({"do":"menu"})");
}

TEST(Event, thatSetsAPolicyHoldsItsValueAndMessage) {
  EXPECT_EQ(commandOf("set printPolicy 1"), R"({"do":"set","values":{"printPolicy":1}})");
  EXPECT_EQ(commandOf("set authState 0 \"You may \\\"not\\\"\" # comment"),
            R"({"do":"set","values":{"authState":0},"message":"You may \"not\""})");
  EXPECT_EQ(commandOf("set  config  { \"b\" : [ 1, {\"a #\": \"}\\\"]\"} ] }"),
            R"({"do":"set","values":{"config":{"b":[1,{"a #":"}\"]"}]}}})");
  EXPECT_EQ(commandOf("set openInWhitelist []"), R"({"do":"set","values":{"openInWhitelist":[]}})");
}

TEST(Event, thatOpensAUrlHoldsItAndItsSource) {
  EXPECT_EQ(commandOf("open notes://a/b?c#d"), R"({"do":"openURL","url":"notes://a/b?c#d"})");
  EXPECT_EQ(commandOf("open x-a+b.1:c from com.example.mail"),
            R"({"do":"openURL","url":"x-a+b.1:c","sourceApplication":"com.example.mail"})");
}

TEST(Event, thatIsATouchHoldsItsPlaceIfAny) {
  EXPECT_EQ(commandOf("touch"), R"({"do":"touch"})");
  EXPECT_EQ(commandOf("touch 10 -2.5"), R"({"do":"touch","x":10.0,"y":-2.5})");
}

TEST(Event, withATextHoldsAllOfTheLineUpToAComment) {
  EXPECT_EQ(commandOf("tap Save all  # and go on"), R"({"do":"tap","title":"Save all"})");
  EXPECT_EQ(commandOf("type issue#1, größer \r"), R"({"do":"type","text":"issue#1, größer"})");
  EXPECT_EQ(commandOf("choose Copy to Example Mail # and go on"), R"({"do":"choose","title":"Copy to Example Mail"})");
  EXPECT_EQ(commandOf("dictate one\ttwo"), "{\"do\":\"dictate\",\"text\":\"one\\ttwo\"}");
}

TEST(Event, withATextInQuotesHoldsItAsJson) {
  EXPECT_EQ(commandOf("type \" # a\\nb \" # comment"), "{\"do\":\"type\",\"text\":\" # a\\nb \"}");
  EXPECT_EQ(commandOf("tap \"\\u00e4\""), R"({"do":"tap","title":"ä"})");
}

TEST(Event, thatIsAnActionHoldsItsSelector) {
  EXPECT_EQ(commandOf("perform copy:"), R"({"do":"perform","action":"copy:"})");
  EXPECT_EQ(commandOf("perform _a1:b:"), R"({"do":"perform","action":"_a1:b:"})");
}

TEST(Event, forAnExtensionHoldsWhatIsDoneInIt) {
  const std::vector<Event> events =
      eventsOf("extension tap 2 # and so on\nextension touch 1 2\nextension type a b\nextension kill");
  ASSERT_EQ(events.size(), 5u);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(events[i].kind, Kind::kExtension);
  }
  EXPECT_EQ(events[0].name, "extension tap");
  EXPECT_EQ(events[0].command.dump(), R"({"do":"tap","title":"2"})");
  EXPECT_EQ(events[1].command.dump(), R"({"do":"touch","x":1.0,"y":2.0})");
  EXPECT_EQ(events[2].command.dump(), R"({"do":"type","text":"a b"})");
  EXPECT_EQ(events[3].command.dump(), R"({"do":"kill"})");
}

TEST(Event, ofTheWindowsHoldsWhatHappensToWhich) {
  EXPECT_EQ(commandOf("windows"), R"({"do":"windows"})");
  EXPECT_EQ(commandOf("window show Banner"), R"({"do":"window","wish":"show","name":"Banner"})");
  EXPECT_EQ(commandOf("window show Banner 2000.5"), R"({"do":"window","wish":"show","name":"Banner","level":2000.5})");
  EXPECT_EQ(commandOf("window show A normal"), R"({"do":"window","wish":"show","name":"A","level":0.0})");
  EXPECT_EQ(commandOf("window show A statusBar"), R"({"do":"window","wish":"show","name":"A","level":1000.0})");
  EXPECT_EQ(commandOf("window show A alert # above"), R"({"do":"window","wish":"show","name":"A","level":2000.0})");
  EXPECT_EQ(commandOf("window key A"), R"({"do":"window","wish":"key","name":"A"})");
  EXPECT_EQ(commandOf("window hide A"), R"({"do":"window","wish":"hide","name":"A"})");
  EXPECT_EQ(commandOf("window close A"), R"({"do":"window","wish":"close","name":"A"})");
  EXPECT_EQ(commandOf("alert Saved at last"), R"({"do":"alert","title":"Saved at last"})");
  EXPECT_EQ(commandOf("keyboard show"), R"({"do":"keyboard","wish":"show"})");
  EXPECT_EQ(commandOf("keyboard hide"), R"({"do":"keyboard","wish":"hide"})");
  EXPECT_EQ(commandOf("rotate landscapeLeft"), R"({"do":"rotate","orientation":"landscapeLeft"})");
}

TEST(Event, ofTheSdkHoldsWhatItAsks) {
  EXPECT_EQ(commandOf("authenticate"), R"({"do":"authenticate"})");
  EXPECT_EQ(commandOf("ask isPasscodeExtensionActive"), R"({"do":"ask","question":"isPasscodeExtensionActive"})");
  EXPECT_EQ(commandOf("ask canAppDisplayPasscodeExtension"),
            R"({"do":"ask","question":"canAppDisplayPasscodeExtension"})");
}

TEST(Event, thatLooksAtTheScreenMayHaveATitle) {
  const std::vector<Event> events = eventsOf("screen\nscreen The share sheet # offers nothing");
  ASSERT_EQ(events.size(), 3u);
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(events[i].kind, Kind::kScreen);
    EXPECT_EQ(events[i].name, "screen");
    EXPECT_TRUE(events[i].command.empty());
  }
  EXPECT_EQ(events[0].title, "");
  EXPECT_EQ(events[1].title, "The share sheet");
}

TEST(Event, thatAwaitsTheAppHoldsTheCall) {
  const std::vector<Event> events = eventsOf("await displayMessage: # comes");
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].kind, Kind::kAwait);
  EXPECT_EQ(events[0].call, "displayMessage:");
}

TEST(Events, areReadWithTheirLinesAndEndWithTheEndOfTheApp) {
  const std::vector<Event> events = eventsOf("# first\n\n  wait 20\nresign");
  ASSERT_EQ(events.size(), 3u);
  EXPECT_EQ(events[0].kind, Kind::kWait);
  EXPECT_EQ(events[0].wait, std::chrono::milliseconds(20));
  EXPECT_EQ(events[0].line, 3u);
  EXPECT_EQ(events[1].line, 4u);
  EXPECT_EQ(events[2].kind, Kind::kTerminate);
  EXPECT_EQ(events[2].line, 0u);
}

TEST(Events, thatEndTheAppThemselvesGetNoOtherEnd) {
  EXPECT_EQ(eventsOf("ends").size(), 1u);
  EXPECT_EQ(eventsOf("ends")[0].kind, Kind::kEnds);
  EXPECT_EQ(eventsOf("terminate").size(), 1u);
  EXPECT_EQ(eventsOf("terminate")[0].line, 1u);
  EXPECT_EQ(eventsOf("").size(), 1u);
}

} // namespace
