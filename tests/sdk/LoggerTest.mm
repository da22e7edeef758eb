#import <Foundation/Foundation.h>
#import <Zorbel/Zorbel.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <set>
#include <sstream>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Child.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

std::string logPath() {
  return
      [[NSHomeDirectory() stringByAppendingPathComponent:@"Library/Logs/Zorbel/zorbel.log"] fileSystemRepresentation];
}

std::vector<std::string> fileLines() {
  std::ifstream file(logPath());
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);)
    lines.push_back(line);
  return lines;
}

/// The lines without their times.
std::vector<std::string> texts() {
  std::vector<std::string> lines;
  for (const std::string &line : fileLines())
    lines.push_back(line.substr(line.find(' ') + 1));
  return lines;
}

/// What `action` writes to standard output.
std::string shownBy(const std::function<void()> &action) {
  // GoogleTest's own capture wants to write outside the container.
  const std::string path = [[NSTemporaryDirectory() stringByAppendingPathComponent:@"shown"] fileSystemRepresentation];
  std::fflush(stdout);
  const int before = dup(STDOUT_FILENO);
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600);
  if (before < 0 || file < 0) std::abort();
  dup2(file, STDOUT_FILENO);
  action();
  std::fflush(stdout);
  dup2(before, STDOUT_FILENO);
  close(before);
  close(file);
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

TEST(Logger, writesTimeLevelAndTextOfOneLineToItsFile) {
  [Zorbel wrapperLogAtLevel:2 format:@"Sandboxing application %@ (%@)", @"Notes", @"4.2.0.18"];
  ASSERT_EQ(fileLines().size(), 1u);
  EXPECT_THAT(fileLines()[0], MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{3}Z 2 "
                                           "Sandboxing application Notes \\(4\\.2\\.0\\.18\\)"));
}

TEST(Logger, writesTheSameLineToStandardOutputWhenNobodyFollowsTheTrace) {
  const std::string shown = shownBy([] { [Zorbel wrapperLogAtLevel:5 format:@"detail"]; });
  ASSERT_EQ(fileLines().size(), 1u);
  EXPECT_EQ(shown, fileLines()[0] + "\n");
}

TEST(Logger, writesALineToTheTraceAndNotToStandardOutputWhenTheTraceIsFollowed) {
  const std::string container = freshFolder();
  const ChildResult child =
      runChild({SDK_ASKER, "log", "detail"}, {{"QVDEVICE_CONTAINER", container}, {"QVDEVICE_TRACE_FD", "1"}});
  EXPECT_EQ(child.status, 0) << child.errors;
  EXPECT_THAT(child.output, HasSubstr(R"("level":5,"text":"detail")"));
  EXPECT_THAT(child.output, Not(HasSubstr(" 5 detail")));
  std::ostringstream written;
  written << std::ifstream(container + "/Library/Logs/Zorbel/zorbel.log").rdbuf();
  EXPECT_THAT(written.str(), HasSubstr("Z 5 detail\n"));
}

TEST(Logger, stampsEachLineWithTheSecondInWhichItIsWritten) {
  [Zorbel wrapperLogAtLevel:5 format:@"before"];
  sleep(1);
  [Zorbel wrapperLogAtLevel:5 format:@"after"];
  ASSERT_EQ(fileLines().size(), 2u);
  EXPECT_LT(fileLines()[0].substr(0, 19), fileLines()[1].substr(0, 19));
}

TEST(Logger, takesStringsOfBothKindsAndNumbers) {
  [Zorbel wrapperLogAtLevel:0 format:@"%s: Caught %@: %d %.1f", "NSDataSandboxInit", @"HookException", 3, 1.5];
  EXPECT_THAT(texts(), ElementsAre("0 NSDataSandboxInit: Caught HookException: 3 1.5"));
}

TEST(Logger, printsNilObjectsAndNullStringsAsTheFormatterDoes) {
  [Zorbel wrapperLogAtLevel:0 format:@"%@ and %s", nil, static_cast<const char *>(nullptr)];
  EXPECT_THAT(texts(), ElementsAre("0 (null) and (null)"));
}

TEST(Logger, givenANilFormatLogsALineInsteadOfRaising) {
  NSString *format = nil;
  EXPECT_NO_THROW([Zorbel wrapperLogAtLevel:1 format:format]);
  EXPECT_THAT(texts(), ElementsAre("1 (null)"));
}

TEST(Logger, keepsCharactersBeyondAsciiAndPercentSignsOfArguments) {
  [Zorbel wrapperLogAtLevel:3 format:@"%@", @"Größe 100%@ 日本"];
  EXPECT_THAT(texts(), ElementsAre("3 Größe 100%@ 日本"));
}

TEST(Logger, keepsCharactersThatFoundationHoldsInOneByteEach) {
  [Zorbel wrapperLogAtLevel:3 format:@"%@", [NSString stringWithUTF8String:"Gr\xc3\xb6\xc3\x9f"
                                                                           "e \xc2\xa0\xc3\xbf."]];
  EXPECT_THAT(texts(), ElementsAre("3 Gr\xc3\xb6\xc3\x9f"
                                   "e \xc2\xa0\xc3\xbf."));
}

TEST(Logger, keepsAZeroInALine) {
  [Zorbel wrapperLogAtLevel:3 format:@"before%Cafter", static_cast<unichar>(0)];
  const unichar characters[] = {'a', 0, 'b'};
  [Zorbel wrapperLogAtLevel:3 format:@"%@", [NSString stringWithCharacters:characters length:3]];
  const char expected[] = "3 before\0after";
  EXPECT_THAT(texts(), ElementsAre(std::string(expected, sizeof expected - 1), std::string("3 a\0b", 5)));
}

TEST(Logger, writesAShortLineWholeAfterALongOne) {
  NSString *const many = [@"" stringByPaddingToLength:100000 withString:@"long " startingAtIndex:0];
  [Zorbel wrapperLogAtLevel:1 format:@"%@", many];
  [Zorbel wrapperLogAtLevel:1 format:@"short"];
  EXPECT_THAT(texts(), ElementsAre(std::string("1 ") + [many UTF8String], "1 short"));
}

TEST(Logger, writesAnEmptyTextAsALineWithoutText) {
  [Zorbel wrapperLogAtLevel:4 format:@""];
  EXPECT_THAT(texts(), ElementsAre("4 "));
}

TEST(Logger, keepsLinesInTheOrderOfTheCalls) {
  for (int i = 0; i < 5; ++i)
    [Zorbel wrapperLogAtLevel:i format:@"line %d", i];
  EXPECT_THAT(texts(), ElementsAre("0 line 0", "1 line 1", "2 line 2", "3 line 3", "4 line 4"));
}

TEST(Logger, goesOnInANewFileAfterTheAppHasDeletedAllItsFiles) {
  [Zorbel wrapperLogAtLevel:0 format:@"before"];
  [[NSFileManager defaultManager] removeItemAtPath:[NSHomeDirectory() stringByAppendingPathComponent:@"Library/Logs"]
                                             error:NULL];
  ASSERT_NE(access(logPath().c_str(), F_OK), 0);
  [Zorbel wrapperLogAtLevel:0 format:@"after"];
  EXPECT_THAT(texts(), ElementsAre("0 after"));
}

TEST(Logger, stillWritesToStandardOutputWhenItsFileCannotBeMade) {
  [@"in the way" writeToFile:[NSHomeDirectory() stringByAppendingPathComponent:@"Library/Logs"] atomically:YES
                    encoding:NSUTF8StringEncoding
                       error:NULL];
  EXPECT_THAT(shownBy([] { [Zorbel wrapperLogAtLevel:0 format:@"text"]; }), MatchesRegex("[^ ]+ 0 text\n"));
}

TEST(Logger, whoseFileIsSuspendedWritesOnlyToStandardOutputUntilItGoesOn) {
  [Zorbel wrapperLogAtLevel:0 format:@"before"];
  [Zorbel setLoggingToFileSuspended:YES];
  EXPECT_THAT(shownBy([] { [Zorbel wrapperLogAtLevel:0 format:@"meanwhile"]; }), MatchesRegex("[^ ]+ 0 meanwhile\n"));
  [Zorbel setLoggingToFileSuspended:NO];
  [Zorbel wrapperLogAtLevel:0 format:@"after"];
  EXPECT_THAT(texts(), ElementsAre("0 before", "0 after"));
}

TEST(Logger, calledFromManyThreadsNeverMixesTheirLinesAndLosesNone) {
  constexpr int kThreads = 8;
  constexpr int kLines = 200;
  const std::string shown = shownBy([] {
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
      threads.emplace_back([number] {
        GSRegisterCurrentThread();
        for (int i = 0; i < kLines; ++i)
          [Zorbel wrapperLogAtLevel:3 format:@"thread %d line %d end", number, i];
        GSUnregisterCurrentThread();
      });
    }
    for (std::thread &thread : threads)
      thread.join();
  });
  const std::vector<std::string> lines = texts();
  std::set<std::string> expected;
  for (int number = 0; number < kThreads; ++number)
    for (int i = 0; i < kLines; ++i)
      expected.insert("3 thread " + std::to_string(number) + " line " + std::to_string(i) + " end");
  EXPECT_EQ(lines.size(), static_cast<std::size_t>(kThreads * kLines));
  EXPECT_EQ(std::set<std::string>(lines.begin(), lines.end()), expected);
  std::ostringstream file;
  file << std::ifstream(logPath()).rdbuf();
  EXPECT_EQ(shown, file.str());
}

} // namespace
