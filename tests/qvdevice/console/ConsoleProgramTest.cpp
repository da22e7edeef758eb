// The console as a program: how it begins, what it makes of an app that ends, crashes or hangs, and how it ends.
#include "ConsoleProcess.h"
#include "Program.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <optional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using testing::AnyOf;
using testing::HasSubstr;
using Done = std::pair<int, std::string>;

const std::string kOk = R"({"ok":true})";

/// An app that does `what` when it goes to the background.
std::string leavingApp(const WorkFolder& folder, const std::string& what) {
  std::string source = appSource("");
  const std::string launch = "- (BOOL)application:";
  source.insert(source.find(launch),
                "- (void)applicationDidEnterBackground:(UIApplication *)application { " + what + " }\n");
  return folder.app("Leaving", source);
}

TEST(Console, showsTheNotesAppWithoutBeingToldWhichAndEndsWithItOnRequest) {
  ConsoleProcess console({});
  EXPECT_EQ(console.untilState("running").value("app", ""), "Notes");
  EXPECT_EQ(console.happen("tap Edit"), Done(200, kOk));
  EXPECT_EQ(console.post("quit", "{}"), Done(200, kOk));
  EXPECT_EQ(console.until("kind", "end").value("sentence", ""), "Notes was told to end and did, with status 0");
  EXPECT_EQ(console.wait(), 0);
}

TEST(Console, givesTheReasonWhenTheAppRefusesAnEvent) {
  ConsoleProcess console({});
  console.untilState("running");
  const auto [status, body] = console.happen("tap Nothing");
  EXPECT_EQ(status, 409);
  EXPECT_THAT(body, HasSubstr(R"(no button that is shown has the title \"Nothing\")"));
  EXPECT_EQ(console.happen("extension tap 1"), Done(409, R"({"error":"no extension runs"})"));
  EXPECT_EQ(console.post("relaunch", "{}"),
            Done(409, R"({"error":"the app runs; it can be started again when it has ended"})"));
  EXPECT_EQ(console.happen("menu"), Done(409, R"({"error":"there is nothing to be done with what is selected"})"))
      << "still there";
}

TEST(Console, endsWithTheAppWhenTheUserPressesControlC) {
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    ConsoleProcess console({});
    console.untilState("running");
    // A terminal tells the whole group.
    kill(number == SIGINT ? -console.pid() : console.pid(), number);
    EXPECT_EQ(console.until("kind", "end").value("sentence", ""), "Notes was told to end and did, with status 0");
    EXPECT_EQ(console.wait(), 0) << number;
  }
}

TEST(Console, tellsOfACrashGoesOnAndEndsWithItsStatus) {
  const WorkFolder folder;
  ConsoleProcess console({leavingApp(folder, "signal(SIGSEGV, SIG_DFL); raise(SIGSEGV);")});
  console.untilState("running");
  EXPECT_EQ(console.happen("background"), Done(410, R"({"error":"the app ended before it answered"})"));
  const auto status = console.untilState("ended");
  EXPECT_EQ(status.value("sentence", ""), "Leaving crashed by signal 11 (Segmentation fault)");
  EXPECT_EQ(status.value("status", 0), 1);
  EXPECT_EQ(console.happen("menu"),
            Done(410, R"json({"error":"Leaving crashed by signal 11 (Segmentation fault)"})json"));
  EXPECT_EQ(console.post("quit", "{}"), Done(200, kOk));
  EXPECT_EQ(console.wait(), 1);
}

TEST(Console, startsTheAppAgainWithWhatItHasStored) {
  const WorkFolder folder;
  const std::string container = folder.path() / "container";
  ConsoleProcess console({"--container", container});
  console.untilState("running");
  EXPECT_EQ(console.happen("terminate"), Done(200, kOk));
  console.untilState("ended");
  std::ofstream(container + "/Documents/kept.txt") << "kept";
  EXPECT_EQ(console.post("relaunch", "{}"), Done(200, kOk));
  EXPECT_EQ(console.untilState("running").value("launch", 0), 2);
  EXPECT_EQ(console.happen("tap Edit"), Done(200, kOk));
  console.post("quit", "{}");
  EXPECT_EQ(console.wait(), 0);
  EXPECT_TRUE(fs::exists(container + "/Documents/kept.txt"));
}

TEST(Console, endsAnAppThatHangsAndSaysSo) {
  const WorkFolder folder;
  ConsoleProcess console({"--timeout", "1", leavingApp(folder, "for (;;) pause();")});
  console.untilState("running");
  const char* const sentence = "Leaving gave no answer in 1 second and was ended";
  EXPECT_EQ(console.happen("background"), Done(504, std::string(R"({"error":")") + sentence + "\"}"));
  EXPECT_EQ(console.untilState("ended").value("sentence", ""), sentence);
  console.post("quit", "{}");
  EXPECT_EQ(console.wait(), 2);
}

TEST(Console, canBeEndedWhileTheAppHangs) {
  const WorkFolder folder;
  ConsoleProcess console({"--timeout", "600", leavingApp(folder, "for (;;) pause();")});
  console.untilState("running");
  std::thread page([&console] { console.happen("background"); });
  console.until("event", "background");
  const auto before = Clock::now();
  kill(console.pid(), SIGINT);
  EXPECT_EQ(console.wait(), 2);
  EXPECT_LT(Clock::now() - before, 60s);
  page.join();
}

TEST(Console, givesAnAppThatIsBusyAMomentToEndInGoodOrder) {
  const WorkFolder folder;
  const std::string idle = folder.path() / "idle";
  ConsoleProcess console({leavingApp(folder, "while (access(\"" + idle + "\", F_OK) != 0) usleep(50000);")});
  console.untilState("running");
  Done done;
  std::thread page([&] { done = console.happen("background"); });
  console.until("event", "background");
  kill(console.pid(), SIGINT);
  folder.write("idle", "");
  EXPECT_EQ(console.until("kind", "end").value("sentence", ""), "Leaving was told to end and did, with status 0");
  EXPECT_EQ(console.wait(), 0);
  page.join();
  EXPECT_THAT(done,
              AnyOf(Done(504, R"({"error":"the console was to end before the app had answered"})"), Done(200, kOk)))
      << "it may have been quicker than the signal";
}

/// The options for Notes beside a Manager whose passcode extension takes so many seconds to begin.
std::vector<std::string> withSlowExtension(const WorkFolder& folder, int seconds) {
  const fs::path manager = folder.path() / "Manager.app";
  fs::copy(fs::path(APPS) / "Manager.app", manager, fs::copy_options::recursive);
  const std::string program = "Manager.app/PlugIns/Passcode.appex/Passcode";
  folder.write(program, "#!/bin/sh\nsleep " + std::to_string(seconds) + "\nexec " EMULATOR " '" APPS "/" + program +
                            "' \"$@\"\n");
  return {"--system-version", "12.4",      "--install", manager,          "--policies",
          AUTHENTICATE,       "--timeout", "600",       APPS "/Notes.app"};
}

TEST(Console, waitsForAnExtensionThatIsNotOnTheScreenYet) {
  const WorkFolder folder;
  ConsoleProcess console(withSlowExtension(folder, 1));
  console.untilState("running");
  EXPECT_EQ(console.happen("authenticate"), Done(200, kOk));
  EXPECT_EQ(console.happen("extension tap 1"), Done(200, kOk));
}

TEST(Console, killsAnExtensionThatIsNeverShownWithoutWaitingForIt) {
  const WorkFolder folder;
  ConsoleProcess console(withSlowExtension(folder, 600));
  console.untilState("running");
  EXPECT_EQ(console.happen("authenticate"), Done(200, kOk));
  EXPECT_EQ(console.happen("extension kill"), Done(200, kOk));
  EXPECT_EQ(console.happen("extension kill"), Done(409, R"({"error":"no extension runs"})"));
}

TEST(Console, canBeEndedWhileAnExtensionIsWaitedFor) {
  const WorkFolder folder;
  ConsoleProcess console(withSlowExtension(folder, 600));
  console.untilState("running");
  EXPECT_EQ(console.happen("authenticate"), Done(200, kOk));
  Done done;
  std::thread page([&] { done = console.happen("extension tap 1"); });
  console.until("event", "extension tap");
  kill(console.pid(), SIGINT);
  EXPECT_EQ(console.wait(), 0);
  page.join();
  EXPECT_EQ(done, Done(504, R"({"error":"the console was to end before the extension had answered"})"));
}

TEST(Console, isRefusedWhenThereIsOneForTheDeviceAlready) {
  const WorkFolder folder;
  const std::string device = folder.path() / "device";
  std::optional<ConsoleProcess> first(std::in_place, std::vector<std::string>{"--device", device});
  first->untilState("running");
  const Ended second = qvdevice({"console", "--device", device});
  EXPECT_EQ(second.status, 69);
  EXPECT_EQ(second.out, "");
  EXPECT_EQ(second.err, "qvdevice: there is a console already for the device " + device +
                            "; end that one first, or name another folder\n");
  EXPECT_EQ(first->happen("tap Edit"), Done(200, kOk)) << "the first goes on";
  kill(first->pid(), SIGKILL);
  first.reset();
  ConsoleProcess third({"--device", device});
  EXPECT_EQ(third.untilState("running").value("app", ""), "Notes") << "a killed one has no device any more";
}

TEST(Console, isRefusedWhenThereIsOneForTheContainerAlready) {
  const WorkFolder folder;
  const std::string container = folder.path() / "container";
  const ConsoleProcess first({"--container", container});
  const Ended second = qvdevice({"console", "--container", container});
  EXPECT_EQ(second.status, 69);
  EXPECT_THAT(second.err, HasSubstr("there is a console already for the container " + container));
}

TEST(Console, leavesNothingBehindButWhatItWasGiven) {
  const WorkFolder folder;
  fs::create_directory(folder.path() / "temporary");
  setenv("TMPDIR", (folder.path() / "temporary").c_str(), 1);
  {
    ConsoleProcess console({"--device", folder.path() / "device"});
    console.untilState("running");
    console.post("quit", "{}");
    EXPECT_EQ(console.wait(), 0);
  }
  unsetenv("TMPDIR");
  EXPECT_TRUE(fs::is_empty(folder.path() / "temporary"));
  for (const auto& entry : fs::directory_iterator(folder.path() / "device")) {
    const std::string name = entry.path().filename();
    EXPECT_TRUE(name == "Apps" || name.starts_with("pasteboard.db") || name.starts_with("keychain.db")) << name;
  }
}

TEST(Console, thatCannotStartSaysWhyBeforeAnybodyOpensAPage) {
  const WorkFolder folder;
  const Ended noApp = qvdevice({"console", folder.path() / "No.app"});
  EXPECT_EQ(noApp.status, 66);
  EXPECT_EQ(noApp.out, "");
  const Ended noPolicies = qvdevice({"console", "--policies", folder.path() / "none.json"});
  EXPECT_EQ(noPolicies.status, 66);
  EXPECT_EQ(noPolicies.out, "");
  EXPECT_EQ(qvdevice({"console", "--events", "x"}).status, 64);
  EXPECT_EQ(qvdevice({"console", "--port", "70000"}).status, 64);
}

TEST(Console, withPoliciesThatTheSdkRefusesShowsThatTheAppCouldNotStart) {
  const WorkFolder folder;
  ConsoleProcess console({"--policies", folder.write("policies.json", R"({"redy": true})")});
  EXPECT_THAT(console.untilState("ended").value("sentence", ""),
              HasSubstr(R"(unknown key "redy"; did you mean "ready"?)"));
  console.post("quit", "{}");
  EXPECT_EQ(console.wait(), 65);
}

} // namespace
