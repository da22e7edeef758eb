// What a program says on the device, and where its standard error leads: to something that can be opened again.
#include "Program.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

std::vector<std::string> outputOf(const Ended& ended) {
  std::vector<std::string> texts;
  for (const auto& object : objectsOf(ended.out, "output")) {
    texts.push_back(object["text"]);
  }
  return texts;
}

std::string contentOf(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

/// What the capture logs, as "<level> <text>".
std::vector<std::string> capturesLog(const Ended& ended) {
  std::vector<std::string> lines;
  for (const auto& line : objectsOf(ended.out, "log")) {
    const std::string text = line["text"];
    for (const char* part :
         {"interception", "STDERR", "file descriptor", "file streams", "temporary file", "nil path"}) {
      if (text.find(part) != std::string::npos) {
        lines.push_back(std::to_string(line["level"].get<int>()) + " " + text);
        break;
      }
    }
  }
  return lines;
}

/// What the capture files of a container hold, oldest first.
std::vector<std::string> capturesIn(const fs::path& container) {
  std::map<std::string, std::string> contents;
  for (const auto& file : fs::directory_iterator(container / "Library/Logs/Zorbel")) {
    const std::string name = file.path().filename();
    if (name.starts_with("sandbox_")) {
      contents[name] = contentOf(file);
    }
  }
  std::vector<std::string> all;
  for (const auto& [name, content] : contents) {
    all.push_back(content);
  }
  return all;
}

const char* const kCapturedAndNot = R"(
    fprintf(stderr, "captured\n");
    NSLog(@"logged");
    fprintf(stdout, "said\n"); fflush(stdout);
    [NSClassFromString(@"SBLogHelper") stopInterceptingLogsPreservingFile:YES];
    fprintf(stderr, "shown again\n");
    NSLog(@"logged again");)";

const std::string kStopDeclared = "@interface NSObject (Capture)\n"
                                  "+ (void)stopInterceptingLogsPreservingFile:(BOOL)preserving;\n"
                                  "@end\n"
                                  "@class UIApplication;\n";

// A sanitizer's symbolizer would inherit the preloaded library, and its complaints would be the app's output.
const std::vector<std::string> kEnvironment{"ASAN_OPTIONS=symbolize=0:log_path=stdout"};

std::string capturingApp(const WorkFolder& folder) {
  return folder.app("Outside", "#import <Foundation/Foundation.h>\n" + kStopDeclared + appSource(kCapturedAndNot));
}

/// Runs the host of the tests of the capture with a terminal as standard error. What it told, and what the terminal
/// got.
Ended runAtATerminal(const std::vector<std::string>& words) {
  const WorkFolder folder;
  const std::string out = folder.path() / "out";
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  std::array<char, 100> name{};
  if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0 ||
      ptsname_r(terminal, name.data(), name.size()) != 0) {
    return {-1, "", "there is no terminal to be had"};
  }
  const pid_t child = fork();
  if (child == 0) {
    dup2(open(out.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
    dup2(open(name.data(), O_RDWR | O_NOCTTY), STDERR_FILENO);
    const std::string preload = std::string("LD_PRELOAD=") + LIBRARY;
    std::vector<const char*> list{QVDEVICE, "exec", "--", "/usr/bin/env", preload.c_str(), LOG_HOST};
    for (const std::string& word : words) {
      list.push_back(word.c_str());
    }
    list.push_back(nullptr);
    setenv("ASAN_OPTIONS", "symbolize=0:log_path=stdout", 1);
    execv(list.front(), const_cast<char**>(list.data()));
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  Ended ended{WEXITSTATUS(status), contentOf(out), ""};
  std::array<char, 1000> text{};
  pollfd ready{terminal, POLLIN, 0};
  if (poll(&ready, 1, 0) == 1 && (ready.revents & POLLIN) != 0) {
    ended.err.assign(text.data(), static_cast<std::size_t>(read(terminal, text.data(), text.size())));
  }
  close(terminal);
  return ended;
}

} // namespace

TEST(Run, showsWhatAnAppLogsThoughItsStandardErrorIsCapturedAndTheRestWhenItIsNotAnyMore) {
  const WorkFolder folder;
  const std::string container = folder.path() / "container";
  const Ended ended = qvdevice({"run", "--json", "--container", container, capturingApp(folder)}, kEnvironment);
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), ElementsAre(EndsWith("] logged"), "said", "shown again", EndsWith("] logged again")));
  EXPECT_EQ(capturesLog(ended), std::vector<std::string>{"2 [ZorbelWrapper] Starting logs interception."});
  EXPECT_THAT(capturesIn(container), ElementsAre(testing::MatchesRegex("captured\n[^\n]*\\] logged\n")));
}

TEST(Run, capturesAsTheConfigurationSaysOffThenOnThenOffAgainAndNeverAfterThat) {
  const WorkFolder folder;
  const std::string container = folder.path() / "container";
  // Says on standard error what it is configured to, once the library has done what it is configured to.
  std::string source = appSource(R"(fprintf(stderr, "at launch\n");)");
  const std::string launch = "- (BOOL)application:";
  source.insert(source.find(launch), R"(
- (NSString *)zorbelConfigIs:(NSDictionary *)config {
  fprintf(stderr, "%s\n", [[config objectForKey:@"say"] UTF8String]);
  return nil;
}
)");
  const std::string policies =
      folder.write("policies.json", R"({"ready": true, "authState": 1, "config": {"say": "ready and off"}})");
  const std::string events = folder.write("events", R"(
set config {"say": "on", "QV_ZB_WR_ENABLE_LOG_CAPTURE": true}
set config {"say": "on still", "QV_ZB_WR_ENABLE_LOG_CAPTURE": "YES"}
set config {"say": "off again"}
set config {"say": "on for nothing", "QV_ZB_WR_ENABLE_LOG_CAPTURE": 1}
set config {"say": "off for nothing"}
)");
  const Ended ended = qvdevice({"run", "--json", "--container", container, "--policies", policies, "--events", events,
                                folder.app("Outside", source)},
                               kEnvironment);
  EXPECT_EQ(ended.status, 0) << ended.out << ended.err;
  EXPECT_THAT(outputOf(ended), ElementsAre("ready and off", "off again", "on for nothing", "off for nothing"));
  EXPECT_THAT(capturesIn(container), ElementsAre("on\non still\n"));
  const std::string start = "2 [ZorbelWrapper] Starting logs interception.";
  EXPECT_EQ(capturesLog(ended), (std::vector<std::string>{start, start, "0 No file streams were found."}));
}

TEST(Run, showsAPersonWhatACapturedAppLogsWithoutItsPrefix) {
  const WorkFolder folder;
  const Ended ended = qvdevice({"run", capturingApp(folder)}, kEnvironment);
  EXPECT_THAT(ended.out, HasSubstr("\n  app         logged\n  app         said\n"));
  EXPECT_THAT(ended.out, HasSubstr("\n  app         shown again\n  app         logged again\n"));
  EXPECT_THAT(ended.out, Not(HasSubstr("captured")));
}

TEST(Run, withoutTheLibraryShowsEachLineOnce) {
  const WorkFolder folder;
  EXPECT_THAT(outputOf(qvdevice({"run", "--json", "--no-library", capturingApp(folder)}, kEnvironment)),
              ElementsAre("captured", EndsWith("] logged"), "said", "shown again", EndsWith("] logged again")));
}

TEST(Exec, passesOnWhatTheProgramSaysApartAndWhole) {
  const Ended ended =
      qvdevice({"exec", "--", "/bin/sh", "-c", "for i in $(seq 1 5000); do echo out $i; echo err $i >&2; done"});
  EXPECT_EQ(ended.status, 0);
  std::string out;
  std::string err;
  for (int i = 1; i <= 5000; ++i) {
    out += "out " + std::to_string(i) + "\n";
    err += "err " + std::to_string(i) + "\n";
  }
  EXPECT_EQ(ended.out, out);
  EXPECT_EQ(ended.err, err);
}

TEST(Exec, keepsTheOrderOfBothWhereTheyGoTheSameWay) {
  const Ended ended = runProgram({"/bin/sh", "-c",
                                  QVDEVICE_IN_A_SHELL
                                  " exec -- /bin/sh -c 'for i in 1 2 3 4 5; do echo out; echo err >&2; done' 2>&1"});
  EXPECT_EQ(ended.out, "out\nerr\nout\nerr\nout\nerr\nout\nerr\nout\nerr\n");
}

TEST(Exec, givesTheProgramAStandardErrorThatCanBeOpenedAgain) {
  const Ended ended = qvdevice({"exec", "--", "/bin/sh", "-c",
                                "path=$(readlink /proc/$$/fd/2); exec 2>/dev/null; exec 2>>\"$path\"; echo back >&2"});
  EXPECT_EQ(ended.err, "back\n");
}

TEST(Exec, leavesATerminalWhereItIsAndTheProgramFindsItsWayBackToIt) {
  const Ended ended = runAtATerminal({"say=captured", "stop-deleting", "where", "say=after"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.out, HasSubstr("\nstandard error: /dev/pts/"));
  EXPECT_EQ(ended.err, "after\r\n");
}

TEST(Exec, waitsForNobodyWhoStillHoldsTheProgramsStandardError) {
  const Ended ended = qvdevice({"exec", "--", "/bin/sh", "-c", "sleep 100 & echo started >&2"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "started\n");
}
