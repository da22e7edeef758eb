// Commands from outside: a line each, done on the main run loop, answered by a line each.

#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <string>
#include <vector>

#include "Child.h"

namespace {

/// The starter, waiting for commands on its run loop until it is told to go.
class Control : public testing::Test {
protected:
  void SetUp() override {
    std::array<int, 2> ends{};
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    std::vector<std::string> variables = sanitizerOptions();
    variables.push_back("QVDEVICE_CONTAINER=" + freshFolder());
    variables.emplace_back("QVDEVICE_CONTROL_FD=3");
    std::vector<char *> environment;
    for (std::string &variable : variables)
      environment.push_back(variable.data());
    environment.push_back(nullptr);
    child_ = ::fork();
    if (child_ == 0) {
      ::dup2(ends[1], 3);
      std::array<const char *, 3> words{DEVICE_STARTER, "commands", nullptr};
      ::execve(DEVICE_STARTER, const_cast<char **>(words.data()), environment.data());
      ::_exit(127);
    }
    ::close(ends[1]);
    socket_ = ends[0];
  }

  void TearDown() override {
    ::close(socket_);
    int status = 0;
    ::waitpid(child_, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
  }

  void say(const std::string &text) {
    EXPECT_EQ(::send(socket_, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
  }

  /// The next line, without its end; "nothing" after ten seconds.
  std::string answer() {
    std::string line;
    for (;;) {
      pollfd waiting{socket_, POLLIN, 0};
      char c = 0;
      if (::poll(&waiting, 1, 10000) != 1 || ::recv(socket_, &c, 1, 0) != 1) return "nothing";
      if (c == '\n') return line;
      line += c;
    }
  }

  std::string ask(const std::string &line) {
    say(line + "\n");
    return answer();
  }

private:
  pid_t child_ = -1;
  int socket_ = -1;
};

TEST_F(Control, AnAnswerCarriesTheResultOfItsOwnCommandOnly) {
  EXPECT_EQ(ask(R"({"do":"result","about":"windows"})"),
            R"({"ok":true,"result":{"about":"windows","lines":[1,null]}})");
  EXPECT_EQ(ask(R"({"do":"result","about":"it","problem":"no"})"), R"({"error":"no","ok":false})");
  EXPECT_EQ(ask(R"({"do":"nothing"})"), R"({"ok":true})");
}

TEST_F(Control, AVerbThatIsKnownIsDoneAndAnswered) { EXPECT_EQ(ask(R"({"do":"nothing"})"), R"({"ok":true})"); }

TEST_F(Control, AHandlersComplaintIsTheError) {
  EXPECT_EQ(ask(R"({"do":"complain","about":"the \"weather\""})"),
            R"({"error":"complained about the \"weather\"","ok":false})");
}

TEST_F(Control, RunsOnTheMainThread) { EXPECT_EQ(ask(R"({"do":"thread"})"), R"({"error":"main","ok":false})"); }

TEST_F(Control, AVerbThatIsUnknownOrNoLongerHandledIsNamed) {
  EXPECT_EQ(ask(R"({"do":"fly"})"), R"({"error":"nothing is known by the name \"fly\"","ok":false})");
  EXPECT_EQ(ask(R"({"do":"gone"})"), R"({"error":"nothing is known by the name \"gone\"","ok":false})");
}

TEST_F(Control, ALineThatIsNoCommandIsRefusedAndTheNextOneIsDone) {
  EXPECT_EQ(ask("resign"), R"({"error":"not JSON","ok":false})");
  EXPECT_EQ(ask(""), R"({"error":"not JSON","ok":false})");
  EXPECT_EQ(ask("[1]"), R"({"error":"not a JSON object","ok":false})");
  EXPECT_EQ(ask("{}"), R"({"error":"\"do\" must name what to do","ok":false})");
  EXPECT_EQ(ask(R"({"do":1})"), R"({"error":"\"do\" must name what to do","ok":false})");
  EXPECT_EQ(ask(R"({"do":"nothing"})"), R"({"ok":true})");
}

TEST_F(Control, LinesThatComeTogetherOrInPiecesAreDoneInOrder) {
  say("{\"do\":\"nothing\"}\n{\"do\":\"fly\"}\n{\"do\":");
  EXPECT_EQ(answer(), R"({"ok":true})");
  EXPECT_EQ(answer(), R"({"error":"nothing is known by the name \"fly\"","ok":false})");
  say("\"nothing\"}\n");
  EXPECT_EQ(answer(), R"({"ok":true})");
}

TEST_F(Control, ALineWithoutEndIsRefusedAndTheSocketClosed) {
  const std::string much(std::size_t{1} << 16, 'x');
  for (int i = 0; i < 16; ++i)
    say(much);
  say("x");
  EXPECT_EQ(answer(), R"({"error":"the line is too long","ok":false})");
  EXPECT_EQ(answer(), "nothing");
}

} // namespace
