// The file as a process meets it: read when the SDK is loaded, before anything of the app.
#import <Foundation/Foundation.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "support/Child.h"

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
  const ChildResult result =
      runChild({SDK_ASKER}, {{"QVDEVICE_CONTAINER", std::getenv("QVDEVICE_CONTAINER")}, {"QVDEVICE_POLICIES", path}});
  return {result.status, result.output + result.errors};
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
