#include "Program.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

Ended execShell(const std::string& script, const std::vector<std::string>& environment = {}) {
  return qvdevice({"exec", "--", "/bin/sh", "-c", script}, environment);
}

std::string firstLine(const std::string& text) { return text.substr(0, text.find('\n')); }

TEST(Exec, passesOutputAndExitStatusThroughUntouched) {
  const Ended ended = execShell("printf 'a\\036b\\n'; printf 'c' >&2; exit 7");
  EXPECT_EQ(ended.status, 7);
  EXPECT_EQ(ended.out, "a\036b\n");
  EXPECT_EQ(ended.err, "c");
}

TEST(Exec, passesArgumentsThroughUntouched) {
  const Ended ended = qvdevice({"exec", "--", "/usr/bin/printf", "%s|", "[a,b]", "", "--", "{}", "--keep", "-h"});
  EXPECT_EQ(ended.out, "[a,b]||--|{}|--keep|-h|");
}

TEST(Exec, ofAProgramThatASignalEndedGives128AndTheSignal) {
  EXPECT_EQ(execShell("kill -SEGV $$").status, 128 + SIGSEGV);
  EXPECT_EQ(execShell("kill -KILL $$").status, 128 + SIGKILL);
}

TEST(Exec, givesTheProgramAnEmptyWritableContainerWithItsTemporaryFolderInside) {
  const Ended ended = execShell("cd $QVDEVICE_CONTAINER && ls -A && test -w . && echo $TMPDIR && pwd -P");
  const std::vector<std::string> lines = linesOf(ended.out);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0], "tmp");
  EXPECT_EQ(lines[1], lines[2] + "/tmp");
}

TEST(Exec, removesTheContainerAfterwardsReadOnlyFoldersIncluded) {
  const Ended ended =
      execShell("cd $QVDEVICE_CONTAINER; pwd -P; mkdir -p a/b; echo x > a/b/c; chmod 0 a/b; chmod 500 a");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.err, "");
  ASSERT_FALSE(firstLine(ended.out).empty());
  EXPECT_FALSE(fs::exists(firstLine(ended.out)));
}

TEST(Exec, removesTheContainerAfterACrashToo) {
  const Ended ended = execShell("echo $QVDEVICE_CONTAINER; kill -SEGV $$");
  ASSERT_FALSE(firstLine(ended.out).empty());
  EXPECT_FALSE(fs::exists(firstLine(ended.out)));
}

TEST(Exec, removesLinksOutOfTheContainerAndNotWhatTheyLeadTo) {
  const WorkFolder outside;
  const std::string file = outside.write("kept", "kept");
  EXPECT_EQ(execShell("ln -s " + outside.path().string() + " $QVDEVICE_CONTAINER/link").status, 0);
  EXPECT_TRUE(fs::exists(file));
}

TEST(Exec, withKeepLeavesTheContainerAndSaysWhere) {
  const Ended ended =
      qvdevice({"exec", "--keep", "--", "/bin/sh", "-c", "echo $QVDEVICE_CONTAINER; touch $QVDEVICE_CONTAINER/file"});
  const fs::path container = firstLine(ended.out);
  EXPECT_EQ(ended.err, "qvdevice: container " + container.string() + "\n");
  EXPECT_TRUE(fs::exists(container / "file"));
  ASSERT_TRUE(container.filename().string().starts_with("qvdevice."));
  fs::remove_all(container);
}

TEST(Exec, insideAContainerMakesItsOwnInsideThatOne) {
  const Ended ended = execShell(
      std::string("echo $QVDEVICE_CONTAINER; " QVDEVICE_IN_A_SHELL " exec -- /bin/sh -c 'echo $QVDEVICE_CONTAINER'"));
  const std::vector<std::string> lines = linesOf(ended.out);
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[1].starts_with(lines[0] + "/")) << ended.out;
}

TEST(Exec, ofAProgramThatIsNotThereGives127AndASentence) {
  const Ended ended = qvdevice({"exec", "--", "/nowhere/program"});
  EXPECT_EQ(ended.status, 127);
  EXPECT_EQ(ended.err, "qvdevice: cannot start /nowhere/program: No such file or directory\n");
}

TEST(Exec, ofAFileThatMayNotBeExecutedGives126AndASentence) {
  const WorkFolder folder;
  const std::string file = folder.write("text", "text");
  const Ended ended = qvdevice({"exec", "--", file});
  EXPECT_EQ(ended.status, 126);
  EXPECT_EQ(ended.err, "qvdevice: cannot start " + file + ": Permission denied\n");
}

TEST(Exec, withoutAProgramIsRefused) {
  EXPECT_EQ(qvdevice({"exec"}).status, 64);
  EXPECT_EQ(qvdevice({"exec", "--"}).status, 64);
  EXPECT_EQ(qvdevice({"exec", "--kep", "--", "/bin/true"}).status, 64);
}

TEST(Exec, whereNoContainerCanBeMadeStartsNothing) {
  const Ended ended = execShell("echo started", {"TMPDIR=/nowhere", "QVDEVICE_CONTAINER="});
  EXPECT_EQ(ended.status, 70);
  EXPECT_EQ(ended.out, "");
  EXPECT_NE(ended.err.find("no folder for temporary containers"), std::string::npos) << ended.err;
}

TEST(Exec, endsWhatTheProgramLeftRunningBehindIt) {
  const Ended ended = execShell("sleep 300 >/dev/null 2>&1 & echo $!");
  const pid_t left = std::stoi(ended.out);
  EXPECT_EQ(kill(left, 0), -1);
}

TEST(Exec, forwardsATerminationAndRemovesTheContainer) {
  const WorkFolder folder;
  const std::string note = folder.path() / "container";
  const pid_t child = fork();
  if (child == 0) {
    const std::string script = "trap 'exit 9' TERM; echo $QVDEVICE_CONTAINER > " + note + ".new; mv " + note + ".new " +
                               note + "; while :; do sleep 0.05; done";
    execl(QVDEVICE, "qvdevice", "exec", "--", "/bin/sh", "-c", script.c_str(), nullptr);
    _exit(127);
  }
  for (int i = 0; i < 200 && !fs::exists(note); ++i) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  ASSERT_TRUE(fs::exists(note));
  kill(child, SIGTERM);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 9);
  std::string container;
  std::getline(std::ifstream(note) >> std::ws, container);
  ASSERT_FALSE(container.empty());
  EXPECT_FALSE(fs::exists(container));
}

} // namespace
