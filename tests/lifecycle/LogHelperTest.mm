// SBLogHelper's smaller operations, one by one, in a process whose standard error is captured.
#include "support/Support.h"

#include <objc/runtime.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

@interface NSObject (SBLogHelper)
+ (NSString *)filePathFromFile:(FILE *)file;
+ (int)newFileDescriptorForPath:(const char *)path;
+ (int)replaceStdErrDescriptorWithNewPath:(const char *)path;
@end

namespace {

namespace fs = std::filesystem;

Class helper() { return objc_getClass("SBLogHelper"); }

class LogHelper : public testing::Test {
protected:
  void SetUp() override {
    folder = fs::canonical([support::freshFolder() fileSystemRepresentation]);
    file = folder + "/file";
  }
  void TearDown() override { [pool drain]; }

  /// What the class says of the path behind a descriptor, which this closes.
  static std::string pathBehind(int descriptor) {
    FILE *const stream = fdopen(descriptor, "r");
    if (stream == nullptr) return "no stream";
    const std::string path = support::text([helper() filePathFromFile:stream]);
    std::fclose(stream);
    return path;
  }

  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  std::string folder;
  std::string file;
};

} // namespace

TEST_F(LogHelper, namesTheFileBehindAStream) {
  EXPECT_EQ(pathBehind(open(file.c_str(), O_RDWR | O_CREAT, 0600)), file);
  EXPECT_EQ(pathBehind(open(folder.c_str(), O_RDONLY | O_DIRECTORY)), folder);
  EXPECT_EQ(pathBehind(open("/dev/null", O_RDONLY)), "/dev/null");
}

TEST_F(LogHelper, namesTheFileWhereItIsNowAndNotWhereItWasOpened) {
  const int descriptor = open(file.c_str(), O_RDWR | O_CREAT, 0600);
  fs::rename(file, folder + "/moved");
  EXPECT_EQ(pathBehind(descriptor), folder + "/moved");
}

TEST_F(LogHelper, namesNothingForAPipeASocketARemovedFileAndAClosedDescriptor) {
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  EXPECT_EQ(pathBehind(ends[0]), "(nil)");
  close(ends[1]);
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
  EXPECT_EQ(pathBehind(ends[0]), "(nil)");
  close(ends[1]);
  const int removed = open(file.c_str(), O_RDWR | O_CREAT, 0600);
  unlink(file.c_str());
  EXPECT_EQ(pathBehind(removed), "(nil)");
  FILE *const stream = std::fopen(file.c_str(), "w");
  close(fileno(stream));
  EXPECT_EQ([helper() filePathFromFile:stream], nil);
  std::fclose(stream);
}

TEST_F(LogHelper, namesNothingForAStreamWithoutADescriptorAndForNone) {
  std::array<char, 16> memory{};
  FILE *const stream = fmemopen(memory.data(), memory.size(), "w");
  EXPECT_EQ([helper() filePathFromFile:stream], nil);
  std::fclose(stream);
  EXPECT_EQ([helper() filePathFromFile:nullptr], nil);
}

TEST_F(LogHelper, opensAFileForReadingAndForWritingAtItsEnd) {
  std::ofstream(file) << "before ";
  const int descriptor = [helper() newFileDescriptorForPath:file.c_str()];
  ASSERT_GE(descriptor, 0);
  const int flags = fcntl(descriptor, F_GETFL);
  EXPECT_EQ(flags & O_ACCMODE, O_RDWR);
  EXPECT_NE(flags & O_APPEND, 0);
  EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, 0);
  lseek(descriptor, 0, SEEK_SET);
  EXPECT_EQ(write(descriptor, "after", 5), 5);
  std::array<char, 20> text{};
  EXPECT_EQ(pread(descriptor, text.data(), text.size(), 0), 12);
  EXPECT_STREQ(text.data(), "before after");
  close(descriptor);
}

TEST_F(LogHelper, makesAFileThatIsMissingWithMode0744) {
  umask(0);
  close([helper() newFileDescriptorForPath:file.c_str()]);
  struct stat status{};
  ASSERT_EQ(stat(file.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0744U);
}

TEST_F(LogHelper, givesANewDescriptorEachTime) {
  const int first = [helper() newFileDescriptorForPath:file.c_str()];
  const int second = [helper() newFileDescriptorForPath:file.c_str()];
  EXPECT_NE(first, second);
  close(first);
  close(second);
}

TEST_F(LogHelper, givenNoPathToOpenLogsSo) {
  [helper() filePathFromFile:nullptr];
  support::clearLog();
  EXPECT_EQ([helper() newFileDescriptorForPath:nullptr], -1);
  EXPECT_EQ(support::log(), (std::vector<std::string>{"0 Attempted to create a file at nil path."}));
}

TEST_F(LogHelper, givenAPathThatCannotBeOpenedSaysNothingItself) {
  support::clearLog();
  EXPECT_EQ([helper() newFileDescriptorForPath:folder.c_str()], -1);
  EXPECT_EQ([helper() newFileDescriptorForPath:(folder + "/missing/file").c_str()], -1);
  EXPECT_EQ([helper() newFileDescriptorForPath:""], -1);
  EXPECT_EQ([helper() newFileDescriptorForPath:std::string(5000, 'x').c_str()], -1);
  EXPECT_EQ(support::log(), std::vector<std::string>());
}

TEST_F(LogHelper, putsAFileInThePlaceOfStandardErrorAndGivesItsDescriptor) {
  const int descriptor = [helper() replaceStdErrDescriptorWithNewPath:file.c_str()];
  EXPECT_GT(descriptor, 2);
  EXPECT_EQ(support::text([helper() filePathFromFile:stderr]), file);
  EXPECT_EQ(write(descriptor, "one ", 4), 4);
  EXPECT_EQ(write(STDERR_FILENO, "two", 3), 3);
  std::string text;
  std::getline(std::ifstream(file), text);
  EXPECT_EQ(text, "one two");
  close(descriptor);
}

TEST_F(LogHelper, thatCannotOpenThePathLogsTheReason) {
  support::clearLog();
  EXPECT_EQ([helper() replaceStdErrDescriptorWithNewPath:(folder + "/missing/file").c_str()], -1);
  EXPECT_EQ([helper() replaceStdErrDescriptorWithNewPath:std::string(5000, 'x').c_str()], -1);
  // ENOENT, ENAMETOOLONG
  EXPECT_EQ(support::log(),
            (std::vector<std::string>{"0 Error creating file descriptor 2", "0 Error creating file descriptor 36"}));
}

TEST(LogHelperClass, isAClassBelowNSObjectWithClassMethodsOnly) {
  EXPECT_EQ(class_getSuperclass(helper()), [NSObject class]);
  const auto encoding = [](const char *selector) {
    const Method method = class_getClassMethod(helper(), sel_registerName(selector));
    return std::string(method ? method_getTypeEncoding(method) : "missing");
  };
  EXPECT_EQ(encoding("load"), "v16@0:8");
  EXPECT_EQ(encoding("isLogInterceptionStarted"), "C16@0:8");
  EXPECT_EQ(encoding("startInterceptingLogs"), "v16@0:8");
  EXPECT_EQ(encoding("stopInterceptingLogsPreservingFile:"), "v20@0:8C16");
  EXPECT_EQ(encoding("newFileDescriptorForPath:"), "i24@0:8r*16");
  EXPECT_EQ(encoding("replaceStdErrDescriptorWithNewPath:"), "i24@0:8r*16");
  unsigned count = 0;
  std::free(class_copyMethodList(helper(), &count));
  EXPECT_LE(count, 1u); // dealloc
}
