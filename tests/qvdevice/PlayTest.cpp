// Several apps, one after the other, on one device.
#include "Program.h"

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const std::string kNoSymbolizer = "ASAN_OPTIONS=symbolize=0";

/// Says how often it has been launched in its container.
const std::string kCounter =
    appSource("NSString *path = [self pathOf:@\"count\"]; "
              "int count = [[NSString stringWithContentsOfFile:path encoding:NSUTF8StringEncoding "
              "error:NULL] intValue] + 1; "
              "[[NSString stringWithFormat:@\"%d\", count] writeToFile:path atomically:YES "
              "encoding:NSUTF8StringEncoding error:NULL]; "
              "printf(\"launch %d\\n\", count); fflush(stdout);");

class Play : public testing::Test {
protected:
  Ended play(const std::string& text, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"play", "--json"});
    options.push_back(folder.write("scenario", text));
    return qvdevice(options, {kNoSymbolizer});
  }

  static std::vector<std::string> output(const Ended& ended) {
    std::vector<std::string> lines;
    for (const auto& line : objectsOf(ended.out, "output")) {
      lines.push_back(line["text"]);
    }
    return lines;
  }

  /// The sentence of the last line.
  static std::string sentence(const Ended& ended) {
    const auto objects = objectsOf(ended.out);
    if (objects.empty()) {
      return ended.err;
    }
    EXPECT_EQ(objects.back()["kind"], "played") << ended.out << ended.err;
    EXPECT_EQ(objects.back()["status"], ended.status);
    return objects.back().value("sentence", "");
  }

  const WorkFolder folder;
};

TEST_F(Play, keepsTheContainerOfAnAppFromLaunchToLaunchAndOthersOutOfIt) {
  const std::string one = folder.app("One", kCounter);
  folder.app("Two", kCounter);
  const Ended ended = play("launch One.app\nterminate\nlaunch \"" + one + "\"\nterminate\nlaunch ./Two.app\n");
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(output(ended), ElementsAre("launch 1", "launch 2", "launch 1"));
  EXPECT_EQ(sentence(ended), "The scenario was played to its end, with 3 launches");
}

TEST_F(Play, beginsAndEndsEachLaunch) {
  folder.app("One", kCounter);
  const Ended ended = play("launch One.app\nresign\nterminate\nlaunch One.app\n");
  const auto begins = objectsOf(ended.out, "begin");
  ASSERT_EQ(begins.size(), 2u);
  EXPECT_EQ(begins[0]["container"], begins[1]["container"]);
  const auto ends = objectsOf(ended.out, "end");
  ASSERT_EQ(ends.size(), 2u);
  EXPECT_EQ(ends[1]["sentence"], "One was told to end and did, with status 0");
}

TEST_F(Play, keepsThePasteboardFromAppToApp) {
  const std::string allowed = "launch Leaker policies allowed.json\nwait 200\nterminate\nlaunch Reader\n";
  folder.write("allowed.json", R"({"ready": true, "authState": 1, "pasteboardPolicy": 1})");
  EXPECT_THAT(output(play(allowed)), Contains(HasSubstr("The merger is off")));
  folder.write("allowed.json", R"({"ready": true, "authState": 1, "pasteboardPolicy": 0})");
  const auto refused = output(play(allowed));
  EXPECT_THAT(refused, Not(Contains(HasSubstr("The merger is off")))) << "the secret has left the app";
  EXPECT_THAT(refused, Contains(HasSubstr("Leaker copied a secret")));
}

TEST_F(Play, removesTheDeviceAndTheContainersUnlessTheyAreGivenAPlace) {
  folder.app("One", kCounter);
  const std::string container = objectsOf(play("launch One.app\n").out, "begin")[0]["container"];
  EXPECT_FALSE(fs::exists(container));
  const fs::path containers = folder.path() / "containers";
  const fs::path device = folder.path() / "device";
  const std::vector<std::string> options{"--containers", containers, "--device", device};
  EXPECT_THAT(output(play("launch One.app\n", options)), ElementsAre("launch 1"));
  EXPECT_THAT(output(play("launch One.app\n", options)), ElementsAre("launch 2"));
  EXPECT_TRUE(fs::exists(containers / "com.example.One/Documents/count"));
  EXPECT_TRUE(fs::exists(device / "pasteboard.db"));
}

TEST_F(Play, tellsItsChaptersWhereTheyStand) {
  folder.app("One", kCounter);
  const Ended ended = play("chapter Morning\nlaunch One.app\nresign\nchapter \"Noon, later\"\nset authState 2\n"
                           "chapter Night\nends\nchapter After\n");
  EXPECT_EQ(ended.status, 0) << ended.out;
  std::vector<std::string> order;
  for (const auto& object : objectsOf(ended.out)) {
    const std::string kind = object["kind"];
    if (kind == "chapter") {
      order.push_back(object["title"]);
    } else if (kind == "event") {
      order.push_back(object["event"]);
    } else if (kind == "begin" || kind == "end") {
      order.push_back(kind);
    }
  }
  EXPECT_THAT(order, ElementsAre("Morning", "begin", "resign", "Noon, later", "set", "Night", "ends", "end", "After"));
}

TEST_F(Play, tellsAPersonItsChaptersAndHowItEnded) {
  folder.app("One", kCounter);
  const Ended ended =
      qvdevice({"play", folder.write("scenario", "chapter Morning\nlaunch One.app\n")}, {kNoSymbolizer});
  EXPECT_THAT(ended.out, HasSubstr("Morning\n"));
  EXPECT_THAT(ended.out, HasSubstr("\nThe scenario was played to its end, with 1 launch.\n"));
}

TEST_F(Play, isOnTheDeviceThatTheScenarioSaysUnlessTheCommandLineSaysOtherwise) {
  folder.app("One", kCounter);
  const std::string scenario = "device system 12.4 idiom pad\nlaunch One.app\n";
  const auto said = objectsOf(play(scenario).out, "begin")[0];
  EXPECT_EQ(said["systemVersion"], "12.4");
  EXPECT_EQ(said["idiom"], "pad");
  const auto other = objectsOf(play(scenario, {"--system-version", "16.1", "--idiom", "phone"}).out, "begin")[0];
  EXPECT_EQ(other["systemVersion"], "16.1");
  EXPECT_EQ(other["idiom"], "phone");
}

TEST_F(Play, putsAppsOnTheDevice) {
  const fs::path device = folder.path() / "device";
  const Ended ended = play("install Manager\nlaunch Notes\n", {"--device", device});
  EXPECT_EQ(ended.status, 0) << ended.err;
  EXPECT_TRUE(fs::exists(device / "Apps/com.example.manager/Info.plist"));
  const auto installed = objectsOf(ended.out, "installed");
  ASSERT_EQ(installed.size(), 1u);
  EXPECT_EQ(installed[0]["app"], "Manager");
  EXPECT_EQ(installed[0]["identifier"], "com.example.manager");
}

TEST_F(Play, launchesWithAUrlAndItsSource) {
  folder.app("Asked", appSource("puts(getenv(\"QVDEVICE_LAUNCH\")); fflush(stdout);"));
  EXPECT_THAT(output(play("launch Asked.app url notes://a from com.example.mail\n")),
              ElementsAre(R"({"sourceApplication":"com.example.mail","url":"notes://a"})"));
}

TEST_F(Play, stopsAtAnAppThatCrashesWithItsSentenceAndStatus) {
  folder.app("Bad", appSource("return YES; } - (void)applicationWillResignActive:(UIApplication *)a { "
                              "signal(SIGSEGV, SIG_DFL); raise(SIGSEGV); } - (int)other {"));
  folder.app("One", kCounter);
  const Ended ended = play("launch One.app\nterminate\nlaunch Bad.app\nresign\nterminate\nlaunch One.app\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(sentence(ended), "The scenario stopped at its 2nd launch: Bad crashed by signal 11 (Segmentation fault)");
  EXPECT_THAT(output(ended), ElementsAre("launch 1")) << "what follows a crash must not be played";
}

TEST_F(Play, stopsAtAnAppThatHangs) {
  folder.app(
      "Lazy",
      appSource("return YES; } - (void)applicationWillResignActive:(UIApplication *)a { sleep(60); } - (int)other {"));
  const Ended ended = play("launch Lazy.app\nresign\n", {"--timeout", "1"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(sentence(ended), "The scenario stopped at its 1st launch: Lazy (line 2 of the events) gave no answer in 1 "
                             "second and was ended");
}

TEST_F(Play, stopsAtAnEventThatTheAppRefuses) {
  const Ended ended = play("launch Notes\ntap Nowhere\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(sentence(ended), HasSubstr("stopped at its 1st launch: Notes (line 2 of the events) refused \"tap\""));
}

TEST_F(Play, goesOnAfterAnEventThatIsToBeRefusedAndIs) {
  const Ended ended = play("launch Notes\nrefused tap Nowhere\nrefused choose Copy\nrefused cancel\n");
  EXPECT_EQ(ended.status, 0) << ended.out;
  std::vector<std::string> reasons;
  for (const auto& record : objectsOf(ended.out, "refused")) {
    reasons.push_back(record["event"].get<std::string>() + ": " + record["reason"].get<std::string>());
  }
  ASSERT_EQ(reasons.size(), 3u);
  EXPECT_THAT(reasons[0], StartsWith("tap: "));
  EXPECT_EQ(reasons[1], "choose: there is nothing to choose from: no menu and no share sheet is shown");
  EXPECT_EQ(reasons[2], "cancel: there is nothing to cancel: no menu and no share sheet is shown");
  EXPECT_EQ(objectsOf(ended.out, "event")[0]["refused"], true);
}

TEST_F(Play, stopsAtAnEventThatIsToBeRefusedAndIsNot) {
  const Ended ended = play("launch Notes\nrefused tap Edit\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(sentence(ended), HasSubstr("Notes (line 2 of the events) did not refuse \"tap\""));
}

TEST_F(Play, putsAwayWhatIsOffered) {
  folder.write("p.json", R"({"ready": true, "authState": 1, "openInPolicy": 1, "pasteboardPolicy": 1})");
  const Ended cancelled = play("install Reader\nlaunch Notes policies p.json\ntap Share\ncancel\nrefused cancel\n"
                               "tap Open in\ncancel\nrefused cancel\ntap Edit\nmenu\ncancel\nrefused cancel\n");
  EXPECT_EQ(cancelled.status, 0) << cancelled.out;
  EXPECT_THAT(output(cancelled), Contains(HasSubstr("Not shared.")));
  std::vector<std::string> gone;
  for (const auto& object : objectsOf(cancelled.out)) {
    const std::string event = object["kind"] != "event" && object.contains("event") ? object["event"] : "";
    if (event == "dismissed" || event == "hidden") {
      gone.push_back(object["kind"]);
    }
  }
  EXPECT_THAT(gone, ElementsAre("sheet", "openInMenu", "menu"));
}

TEST_F(Play, intoAFolderThatIsNoContainersOrNoDevicesIsRefused) {
  folder.write("mine.txt", "mine");
  folder.app("One", kCounter);
  const Ended device = play("launch One.app\n", {"--device", folder.path()});
  EXPECT_EQ(device.status, 69);
  EXPECT_THAT(device.err, HasSubstr("is no device: it holds "));
  fs::create_directories(folder.path() / "containers/com.example.One/Pictures");
  const Ended container = play("launch One.app\n", {"--containers", folder.path() / "containers"});
  EXPECT_EQ(container.status, 69);
  EXPECT_THAT(container.err, HasSubstr("is no app's container: it holds Pictures"));
}

} // namespace
