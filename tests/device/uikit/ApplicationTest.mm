// UIApplicationMain never returns: these tests run a small app in a process of its own and watch it from outside.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

class RunningApp {
public:
  explicit RunningApp(std::vector<std::string> environment = {}) {
    int output[2], control[2];
    EXPECT_EQ(pipe(output), 0);
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, control), 0);
    std::string container = std::string(std::getenv("QVDEVICE_CONTAINER")) + "/tmp/app-XXXXXX";
    EXPECT_NE(mkdtemp(container.data()), nullptr);
    child_ = fork();
    if (child_ == 0) {
      dup2(output[1], 1);
      dup2(output[1], 2);
      dup2(control[1], 3);
      dup2(output[1], 4);
      for (int descriptor = 5; descriptor < 64; ++descriptor)
        close(descriptor);
      setenv("QVDEVICE_CONTAINER", container.c_str(), 1);
      setenv("QVDEVICE_CONTROL_FD", "3", 1);
      setenv("QVDEVICE_TRACE_FD", "4", 1);
      for (std::string &each : environment)
        putenv(each.data());
      execl(LIFECYCLE_APP, LIFECYCLE_APP, static_cast<char *>(nullptr));
      _exit(127);
    }
    close(output[1]);
    close(control[1]);
    output_ = output[0];
    control_ = control[0];
  }

  ~RunningApp() {
    if (child_ > 0) {
      kill(child_, SIGKILL);
      waitpid(child_, nullptr, 0);
    }
    close(output_);
    close(control_);
  }

  // What the app said until it said `last`, traces left out.
  std::vector<std::string> until(const std::string &last) {
    std::vector<std::string> lines;
    for (;;) {
      std::string line;
      if (!nextLine(output_, buffer_, line)) {
        ADD_FAILURE() << "the app never said \"" << last << "\"";
        return lines;
      }
      if (!line.empty() && line[0] == '\x1e') {
        traces_.push_back(line.substr(1));
        continue;
      }
      lines.push_back(line);
      if (line == last) return lines;
    }
  }

  // What the app said until it ended.
  std::vector<std::string> rest() {
    std::vector<std::string> lines;
    std::string line;
    while (nextLine(output_, buffer_, line)) {
      if (!line.empty() && line[0] == '\x1e')
        traces_.push_back(line.substr(1));
      else
        lines.push_back(line);
    }
    return lines;
  }

  std::string command(const std::string &verb) {
    const std::string line = "{\"do\":\"" + verb + "\"}\n";
    EXPECT_EQ(write(control_, line.data(), line.size()), static_cast<ssize_t>(line.size()));
    std::string answer;
    EXPECT_TRUE(nextLine(control_, answers_, answer));
    const auto read = nlohmann::json::parse(answer);
    nlohmann::ordered_json inOrder = {{"ok", read.at("ok")}};
    if (read.contains("error")) inOrder["error"] = read.at("error");
    return inOrder.dump();
  }

  // The processor time that the app has used, in hundredths of a second.
  long processorTicks() const {
    std::ifstream file("/proc/" + std::to_string(child_) + "/stat");
    const std::string line((std::istreambuf_iterator<char>(file)), {});
    std::istringstream fields(line.substr(line.rfind(')') + 2));
    std::string skipped;
    for (int field = 3; field < 14; ++field)
      fields >> skipped;
    long user = 0, system = 0;
    fields >> user >> system;
    return user + system;
  }

  int end() {
    int status = 0;
    EXPECT_EQ(waitpid(child_, &status, 0), child_);
    child_ = 0;
    return status;
  }

  // The lifecycle events that were traced so far.
  std::vector<std::string> events() const {
    std::vector<std::string> found;
    for (const std::string &line : traces_)
      if (const auto trace = nlohmann::json::parse(line); trace.at("kind") == "lifecycle")
        found.push_back(trace.at("event").get<std::string>());
    return found;
  }

  // The changes of protection classes that were traced so far.
  std::vector<std::string> protections() const {
    std::vector<std::string> found;
    for (const std::string &line : traces_)
      if (const auto trace = nlohmann::json::parse(line); trace.at("kind") == "protection")
        found.push_back(trace.at("path").get<std::string>() + " " + trace.at("from").dump() + " -> " +
                        trace.at("to").dump());
    return found;
  }

private:
  static bool nextLine(int descriptor, std::string &buffer, std::string &line) {
    for (;;) {
      if (const size_t end = buffer.find('\n'); end != std::string::npos) {
        line = buffer.substr(0, end);
        buffer.erase(0, end + 1);
        return true;
      }
      pollfd ready = {descriptor, POLLIN, 0};
      if (poll(&ready, 1, 20'000) <= 0) return false;
      char bytes[4096];
      const ssize_t length = read(descriptor, bytes, sizeof bytes);
      if (length <= 0) return false;
      buffer.append(bytes, static_cast<size_t>(length));
    }
  }

  pid_t child_ = 0;
  int output_ = -1;
  int control_ = -1;
  std::string buffer_, answers_;
  std::vector<std::string> traces_;
};

using Lines = std::vector<std::string>;

const std::string active = "UIApplicationDidBecomeActiveNotification [active]";
const std::string ok = "{\"ok\":true}";

std::string refusal(const std::string &reason) { return "{\"ok\":false,\"error\":\"" + reason + "\"}"; }

TEST(Application, ALaunchTellsTheDelegateAndThenTheObserversStepByStep) {
  RunningApp app;
  EXPECT_EQ(app.until(active),
            (Lines{"willFinishLaunching [inactive]", "didFinishLaunching [inactive]",
                   "UIApplicationDidFinishLaunchingNotification [inactive]", "applicationDidBecomeActive [active]",
                   "UIApplicationDidBecomeActiveNotification [active]"}));
  EXPECT_EQ(app.events(), (Lines{"willFinishLaunching", "didFinishLaunching", "didBecomeActive"}));
}

TEST(Application, ItGoesToTheBackgroundThroughInactiveAndComesBackActive) {
  RunningApp app;
  app.until(active);
  EXPECT_EQ(app.command("enterBackground"), ok);
  EXPECT_EQ(app.until("UIApplicationDidEnterBackgroundNotification [background]"),
            (Lines{"applicationWillResignActive [active]", "UIApplicationWillResignActiveNotification [active]",
                   "applicationDidEnterBackground [background]",
                   "UIApplicationDidEnterBackgroundNotification [background]"}));
  EXPECT_EQ(app.command("enterForeground"), ok);
  EXPECT_EQ(
      app.until(active),
      (Lines{"applicationWillEnterForeground [background]", "UIApplicationWillEnterForegroundNotification [background]",
             "applicationDidBecomeActive [active]", "UIApplicationDidBecomeActiveNotification [active]"}));
}

TEST(Application, ItResignsAndBecomesActiveAgain) {
  RunningApp app;
  app.until(active);
  EXPECT_EQ(app.command("resignActive"), ok);
  EXPECT_EQ(app.command("becomeActive"), ok);
  EXPECT_EQ(app.until(active),
            (Lines{"applicationWillResignActive [active]", "UIApplicationWillResignActiveNotification [active]",
                   "applicationDidBecomeActive [active]", "UIApplicationDidBecomeActiveNotification [active]"}));
}

TEST(Application, StepsThatItsStateDoesNotAllowAreRefusedWithAReason) {
  RunningApp app;
  app.until(active);
  EXPECT_EQ(app.command("enterForeground"), refusal("the app is not in the background"));
  EXPECT_EQ(app.command("becomeActive"), ok) << "it is active already";
  EXPECT_EQ(app.command("enterBackground"), ok);
  EXPECT_EQ(app.command("enterBackground"), refusal("the app is in the background already"));
  EXPECT_EQ(app.command("becomeActive"), refusal("the app is in the background"));
  EXPECT_EQ(app.command("resignActive"), refusal("the app is not active"));
}

TEST(Application, ToldToTerminateItSaysSoAndExitsWithSuccess) {
  RunningApp app;
  app.until(active);
  EXPECT_EQ(app.command("terminate"), ok);
  EXPECT_EQ(app.rest(),
            (Lines{"applicationWillTerminate [active]", "UIApplicationWillTerminateNotification [active]"}));
  const int status = app.end();
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
  EXPECT_EQ(app.events().back(), "willTerminate");
}

TEST(Application, ItsPrivateTerminationEndsItTheSameWay) {
  RunningApp app({"LIFECYCLE_DO=terminate"});
  EXPECT_EQ(app.rest().back(), "UIApplicationWillTerminateNotification [active]");
  const int status = app.end();
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(Application, LeftAloneItGoesOnWithoutUsingTheProcessor) {
  RunningApp app;
  app.until(active);
  const long before = app.processorTicks();
  usleep(500'000);
  EXPECT_LE(app.processorTicks() - before, 5) << "hundredths of a second of half a second";
  EXPECT_EQ(app.command("resignActive"), ok) << "still there, and answering";
}

TEST(Application, ARepeatingTimerFiresUntilItIsInvalidated) {
  RunningApp app({"LIFECYCLE_DO=timer"});
  app.until(active);
  usleep(200'000);
  EXPECT_EQ(app.command("terminate"), ok);
  const Lines said = app.rest();
  EXPECT_EQ(std::count(said.begin(), said.end(), "tick [active]"), 3);
}

TEST(Application, AnExceptionThatNobodyCatchesIsToldAndAborts) {
  for (const char *when : {"LIFECYCLE_DO=raise", "LIFECYCLE_DO=raise later"}) {
    RunningApp app({when});
    const std::string reason = std::string(when) == "LIFECYCLE_DO=raise" ? "asked to raise" : "asked to raise later";
    EXPECT_EQ(app.rest().back(),
              "*** Terminating app due to uncaught exception 'LifecycleException', reason: '" + reason + "'");
    const int status = app.end();
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGABRT);
  }
}

TEST(Application, ADelegateClassThatNobodyKnowsAborts) {
  RunningApp app({"LIFECYCLE_CLASS=NoSuchDelegate"});
  EXPECT_EQ(app.rest(),
            Lines{"*** Terminating app due to uncaught exception 'NSInternalInconsistencyException', reason: "
                  "'Unable to instantiate the UIApplication delegate instance. No class named "
                  "NoSuchDelegate is loaded.'"});
  EXPECT_TRUE(WIFSIGNALED(app.end()));
}

TEST(Application, APrincipalClassThatIsNoApplicationAborts) {
  RunningApp app({"LIFECYCLE_PRINCIPAL=UIView"});
  EXPECT_EQ(app.rest(),
            Lines{"*** Terminating app due to uncaught exception 'NSInternalInconsistencyException', reason: "
                  "'Unable to instantiate the UIApplication subclass instance. UIView is not a "
                  "UIApplication.'"});
  EXPECT_TRUE(WIFSIGNALED(app.end()));
}

TEST(Application, TheDefaultProtectionClassOfTheDeviceIsWhatItsSettingsSay) {
  const struct {
    const char *setting;
    const char *answer;
  } cases[] = {{"NSFileProtectionComplete", "protection: NSFileProtectionComplete, 14 attributes [inactive]"},
               {"NSFileProtectionNone", "protection: NSFileProtectionNone, 14 attributes [inactive]"},
               {"absent", "protection: (none), 13 attributes [inactive]"}};
  for (const auto &each : cases) {
    RunningApp app(
        {"LIFECYCLE_DO=protection", std::string("QVDEVICE_SETTINGS={\"defaultProtection\":\"") + each.setting + "\"}"});
    const Lines said = app.until(active);
    EXPECT_EQ(said.at(2), each.answer);
  }
}

TEST(Application, EveryChangeOfAStoredClassIsTracedOnceAndNothingElse) {
  RunningApp app({"LIFECYCLE_DO=protection"});
  app.until(active);
  EXPECT_EQ(app.protections(), (Lines{"tmp/file null -> \"NSFileProtectionComplete\"",
                                      "tmp/file \"NSFileProtectionComplete\" -> \"NSFileProtectionNone\"",
                                      "tmp/other null -> \"NSFileProtectionNone\""}));
}

TEST(Application, APadSaysThatItIsOne) {
  RunningApp app({"LIFECYCLE_DO=device", "QVDEVICE_SETTINGS={\"idiom\":\"pad\",\"systemVersion\":\"11.4\"}"});
  EXPECT_EQ(app.until(active).at(2), "iPad iOS 11.4, idiom 1, screen 820 x 1180 [inactive]");
}

TEST(Application, APrincipalClassOfTheAppsOwnIsTaken) {
  RunningApp app({"LIFECYCLE_PRINCIPAL=OwnApplication"});
  EXPECT_EQ(app.until(active).front(), "willFinishLaunching [inactive]");
}

TEST(Application, WithoutADelegateClassItLaunchesAndTellsTheObserversAlone) {
  RunningApp app({"LIFECYCLE_CLASS="});
  EXPECT_EQ(app.until(active), (Lines{"UIApplicationDidFinishLaunchingNotification [inactive]", active}));
}

TEST(Application, ADelegateWithTheOldLaunchMethodAloneIsToldByThat) {
  RunningApp app({"LIFECYCLE_CLASS=OldDelegate"});
  EXPECT_EQ(app.until(active).front(), "applicationDidFinishLaunching [inactive]");
  EXPECT_TRUE(WIFEXITED(app.end()));
}

} // namespace
