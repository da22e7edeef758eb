// The file as a process meets it: read when the SDK is loaded, before anything of the app.
#import <Foundation/Foundation.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include <sys/wait.h>

#include <gtest/gtest.h>

namespace {

struct Answer {
  int status;
  std::string text;
};

std::string filePath() {
  return [[NSTemporaryDirectory() stringByAppendingPathComponent:@"policies.json"] fileSystemRepresentation];
}

/// Runs the asking program in this test's container, with `path` as its policies file.
Answer ask(const std::string &path) {
  setenv("QVDEVICE_POLICIES", path.c_str(), 1);
  FILE *const pipe = popen(SDK_ASKER " 2>&1", "r");
  Answer answer{0, ""};
  std::array<char, 4096> buffer;
  while (const std::size_t length = std::fread(buffer.data(), 1, buffer.size(), pipe)) {
    answer.text.append(buffer.data(), length);
  }
  const int status = pclose(pipe);
  answer.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return answer;
}

Answer askWith(const std::string &text) {
  std::ofstream(filePath()) << text;
  return ask(filePath());
}

TEST(PoliciesFile, whenThereIsNoneLeavesTheAnswersOfAnAppThatNobodyHasEnrolled) {
  const Answer answer = ask("");
  EXPECT_EQ(answer.status, 0);
  EXPECT_EQ(answer.text, "main\nflags: 000\nstates: 0 0 0 0 0\nwhitelist: nil\nprefixes: \nconfig: nil\ntoken: nil\n"
                         "schemes: 0000\n");
}

TEST(PoliciesFile, decidesWhatTheSdkAnswers) {
  const Answer answer = askWith(R"({"ready": true, "checkInRequested": true, "authState": 1, "managedPolicy": 2,
    "openInPolicy": 3, "pasteboardPolicy": 4, "printPolicy": 5, "openInWhitelist": ["a", "b.*"],
    "zbPasteboardTypePrefixes": ["p", "q"], "config": {"key": "wert ä"}, "appInfo": {"token": {"base64": "aGVsbG8="}},
    "appSchemes": ["zb1"]})");
  EXPECT_EQ(answer.status, 0);
  EXPECT_EQ(answer.text, "main\nflags: 101\nstates: 1 2 3 4 5\nwhitelist: a,b.*\nprefixes: p,q\nconfig: wert ä\n"
                         "token: hello\nschemes: 1100\n");
}

TEST(PoliciesFile, thatIsMalformedStopsTheProcessBeforeItsMainWithFileLineColumnAndReason) {
  const Answer answer = askWith("{\n  \"redy\": true\n}");
  EXPECT_EQ(answer.status, 65);
  EXPECT_EQ(answer.text, "Zorbel: " + filePath() + ":2:3: unknown key \"redy\"; did you mean \"ready\"?\n");
}

TEST(PoliciesFile, thatIsNotThereStopsTheProcessBeforeItsMain) {
  const Answer answer = ask(filePath() + ".missing");
  EXPECT_EQ(answer.status, 65);
  EXPECT_EQ(answer.text,
            "Zorbel: " + filePath() + ".missing: the policies file cannot be read: No such file or directory\n");
}

TEST(PoliciesFile, thatIsAFolderStopsTheProcessBeforeItsMain) {
  const Answer answer = ask([NSTemporaryDirectory() fileSystemRepresentation]);
  EXPECT_EQ(answer.status, 65);
  EXPECT_EQ(answer.text.find("main"), std::string::npos);
  EXPECT_NE(answer.text.find("the policies file cannot be read"), std::string::npos);
}

} // namespace
