// Changes from outside, while a process runs.
#include <array>
#include <string>
#include <vector>

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string all(int descriptor) {
  std::string text;
  std::array<char, 4096> buffer;
  for (ssize_t length = 0; (length = read(descriptor, buffer.data(), buffer.size())) > 0;)
    text.append(buffer.data(), static_cast<std::size_t>(length));
  return text;
}

std::vector<std::string> linesOf(std::string text) {
  std::vector<std::string> lines;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
    lines.push_back(text.substr(0, end));
    text.erase(0, end + 1);
  }
  return lines;
}

/// What a listening process answers to commands, one a line, and what its delegate hears.
struct Heard {
  std::vector<std::string> answers;
  std::vector<std::string> told;
};

Heard listen(const std::string &commands, const char *variable = nullptr) {
  std::array<int, 2> control{};
  std::array<int, 2> output{};
  EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, control.data()), 0);
  EXPECT_EQ(pipe(output.data()), 0);
  const pid_t child = fork();
  if (child == 0) {
    close(control[0]);
    dup2(output[1], STDOUT_FILENO);
    close(output[0]);
    close(output[1]);
    setenv("QVDEVICE_CONTROL_FD", std::to_string(control[1]).c_str(), 1);
    if (variable) setenv(variable, "1", 1);
    execl(SDK_LISTENER, SDK_LISTENER, nullptr);
    _exit(127);
  }
  close(control[1]);
  close(output[1]);
  const std::string text = commands + "{\"do\": \"end\"}\n";
  EXPECT_EQ(write(control[0], text.data(), text.size()), static_cast<ssize_t>(text.size()));
  Heard heard{linesOf(all(control[0])), linesOf(all(output[0]))};
  close(control[0]);
  close(output[0]);
  int status = 0;
  waitpid(child, &status, 0);
  EXPECT_EQ(status, 0);
  return heard;
}

constexpr const char *kOk = R"({"ok":true})";

TEST(SetCommand, changesPoliciesAndTellsTheDelegateOnTheMainThread) {
  const Heard heard = listen(R"({"do": "set", "values": {"ready": true, "printPolicy": 1}}
{"do": "set", "values": {"authState": 2, "config": {"key": "ä"}}, "message": "Goodbye"}
)");
  EXPECT_THAT(heard.answers, ElementsAre(kOk, kOk));
  EXPECT_THAT(heard.told, ElementsAre("ready", "printPolicy 1", "authState 2, Goodbye", "config ä", "1 1"));
}

TEST(SetCommand, takesValuesAllOrNoneAndGivesTheReason) {
  const Heard heard = listen(R"({"do": "set", "values": {"printPolicy": 1}}
{"do": "set", "values": {"printPolicy": 0, "ready": 1}}
{"do": "set", "values": {"printPolicy": 0, "redy": true}}
{"do": "set", "values": {"printPolicy": 2.0}}
{"do": "set", "values": {"printPolicy": null}}
{"do": "set", "values": {"printPolicy": 18446744073709551615}}
{"do": "set", "values": {"appInfo": {"token": {"base64": "A"}}}}
)");
  EXPECT_THAT(heard.answers,
              ElementsAre(kOk, R"({"error":"ready must be true or false, not the number 1","ok":false})",
                          R"({"error":"unknown key \"redy\"; did you mean \"ready\"?","ok":false})",
                          R"({"error":"printPolicy must be a whole number, not the number 2.0","ok":false})",
                          R"({"error":"printPolicy must be a whole number, not null","ok":false})",
                          R"({"error":"printPolicy is too large: 18446744073709551615","ok":false})",
                          R"({"error":"appInfo.token.base64 is not base64","ok":false})"));
  EXPECT_THAT(heard.told, ElementsAre("printPolicy 1", "0 1"));
}

TEST(SetCommand, thatIsMalformedIsRefusedWithTheReason) {
  const Heard heard = listen(R"({"do": "set"}
{"do": "set", "values": "printPolicy"}
{"do": "set", "values": {"ready": true}, "message": 1}
{"do": "set", "values": {"ready": true}, "mesage": "x"}
)");
  EXPECT_THAT(heard.answers, ElementsAre(R"({"error":"\"values\" must be an object","ok":false})",
                                         R"({"error":"\"values\" must be an object","ok":false})",
                                         R"({"error":"\"message\" must be a string","ok":false})",
                                         R"({"error":"set knows no \"mesage\", only values and message","ok":false})"));
  EXPECT_THAT(heard.told, ElementsAre("0 0"));
}

TEST(SetCommand, withoutValuesChangesNothing) {
  const Heard heard = listen("{\"do\": \"set\", \"values\": {}, \"message\": \"x\"}\n");
  EXPECT_THAT(heard.answers, ElementsAre(kOk));
  EXPECT_THAT(heard.told, ElementsAre("0 0"));
}

TEST(PoliciesCommand, tellsWhatTheSdkAnswersWithNow) {
  const Heard heard = listen(R"({"do": "policies"}
{"do": "set", "values": {"ready": true, "authState": 1, "printPolicy": 7, "openInWhitelist": ["com.example.*"]}}
{"do": "set", "values": {"config": {"key": [1, true]}, "appInfo": {"token": {"base64": "AAE="}}}}
{"do": "policies"}
)");
  EXPECT_THAT(
      heard.answers,
      ElementsAre(
          R"({"ok":true,"result":{"appSchemes":[],"authState":0,"checkInRequested":false,"delegateProxy":false,)"
          R"("managedPolicy":0,"openInPolicy":0,"pasteboardPolicy":0,"printPolicy":0,"ready":false,)"
          R"("readyToTerminate":false,"zbPasteboardTypePrefixes":[]}})",
          kOk, kOk,
          R"({"ok":true,"result":{"appInfo":{"token":{"base64":"AAE="}},"appSchemes":[],"authState":1,)"
          R"("checkInRequested":false,"config":{"key":[1,true]},"delegateProxy":false,"managedPolicy":0,)"
          R"("openInPolicy":0,"openInWhitelist":["com.example.*"],"pasteboardPolicy":0,"printPolicy":7,"ready":true,)"
          R"("readyToTerminate":false,"zbPasteboardTypePrefixes":[]}})"));
}

TEST(AuthenticateCommand, asksWhetherTheAppCanShowTheExtensionAndThenForTheUser) {
  const Heard heard = listen("{\"do\": \"authenticate\"}\n", "LISTENER_ABLE");
  EXPECT_THAT(heard.answers, ElementsAre(kOk));
  EXPECT_THAT(heard.told, ElementsAre("able?", "authenticate", "0 0"));
}

TEST(AuthenticateCommand, isRefusedByAnAppThatCannotShowTheExtension) {
  const Heard heard = listen("{\"do\": \"authenticate\"}\n");
  EXPECT_THAT(heard.answers, ElementsAre(R"({"error":"the app cannot display the passcode extension","ok":false})"));
  EXPECT_THAT(heard.told, ElementsAre("able?", "0 0"));
}

TEST(AskCommand, asksTheDelegateOneQuestion) {
  const Heard heard = listen(R"({"do": "ask", "question": "isPasscodeExtensionActive"}
{"do": "ask", "question": "canAppDisplayPasscodeExtension"}
{"do": "ask", "question": "isReady"}
{"do": "ask"}
)");
  const char *const unknown =
      R"({"error":"\"question\" must be isPasscodeExtensionActive or canAppDisplayPasscodeExtension","ok":false})";
  EXPECT_THAT(heard.answers, ElementsAre(kOk, kOk, unknown, unknown));
  EXPECT_THAT(heard.told, ElementsAre("active?", "able?", "0 0"));
}

TEST(AskCommand, isRefusedWithoutADelegate) {
  const Heard heard = listen(R"({"do": "ask", "question": "isPasscodeExtensionActive"}
{"do": "authenticate"}
)",
                             "LISTENER_DEAF");
  const char *const nobody = R"({"error":"nobody has made itself the SDK's delegate","ok":false})";
  EXPECT_THAT(heard.answers, ElementsAre(nobody, nobody));
}

} // namespace
