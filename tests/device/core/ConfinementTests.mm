// Nothing outside the container can be written, whatever the code tries. The place outside is the folder that holds the
// test program itself: the tests can read it, and nobody else would stop them from writing there.

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include <cerrno>
#include <fstream>
#include <string>
#include <thread>

#include "Child.h"
#include "Pool.h"

namespace {

class Confinement : public PoolTest {
protected:
  std::string container = [QVDeviceContainer() UTF8String];
  std::string program = DEVICE_STARTER;
  std::string outside = program.substr(0, program.rfind('/'));
  std::string victim = outside + "/confinement-victim";

  void TearDown() override {
    EXPECT_NE(::access(victim.c_str(), F_OK), 0) << "something was written outside the container";
    EXPECT_EQ(::access(program.c_str(), X_OK), 0) << "the program outside is gone";
  }

  NSString *string(const std::string &text) { return [NSString stringWithUTF8String:text.c_str()]; }
};

TEST_F(Confinement, OutsideIsWritableForEverybodyElse) {
  struct stat status{};
  ASSERT_EQ(::stat(outside.c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, ::geteuid());
  EXPECT_NE(status.st_mode & S_IWUSR, 0U);
  EXPECT_NE(container.compare(0, outside.size(), outside), 0);
}

TEST_F(Confinement, CreatingAFileOutsideFails) {
  EXPECT_EQ(::open(victim.c_str(), O_WRONLY | O_CREAT, 0644), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, OpeningAnExistingFileOutsideForWritingFails) {
  EXPECT_EQ(::open(program.c_str(), O_RDWR), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, TruncatingAFileOutsideFails) {
  EXPECT_EQ(::truncate(program.c_str(), 0), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, ReadingAFileOutsideSucceeds) {
  const int descriptor = ::open(program.c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_GE(descriptor, 0);
  ::close(descriptor);
}

TEST_F(Confinement, RemovingAFileOutsideFails) {
  EXPECT_EQ(::unlink(program.c_str()), -1);
  EXPECT_EQ(errno, EACCES);
  EXPECT_FALSE([[NSFileManager defaultManager] removeItemAtPath:string(program) error:NULL]);
}

TEST_F(Confinement, MakingAFolderOutsideFails) {
  EXPECT_EQ(::mkdir(victim.c_str(), 0755), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, MakingALinkOutsideFails) {
  EXPECT_EQ(::symlink("target", victim.c_str()), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, MakingASocketOutsideFails) {
  const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  // Relative to its folder: an address has room for short paths only.
  const std::size_t slash = victim.rfind('/');
  ASSERT_EQ(::chdir(victim.substr(0, slash).c_str()), 0);
  const std::string name = victim.substr(slash + 1);
  ASSERT_LT(name.size(), sizeof address.sun_path);
  name.copy(address.sun_path, sizeof address.sun_path - 1);
  EXPECT_EQ(::bind(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), -1);
  EXPECT_EQ(errno, EACCES);
  ::close(descriptor);
}

TEST_F(Confinement, MovingAFileOutFails) {
  const std::string inside = container + "/Documents/file";
  std::ofstream(inside) << "text";
  EXPECT_EQ(::rename(inside.c_str(), victim.c_str()), -1);
  EXPECT_EQ(::access(inside.c_str(), F_OK), 0);
}

TEST_F(Confinement, MovingAFileInFails) {
  EXPECT_EQ(::rename(program.c_str(), (container + "/Documents/stolen").c_str()), -1);
}

TEST_F(Confinement, HardLinkingAFileInAndWritingThereFails) {
  const std::string link = container + "/Documents/link";
  EXPECT_EQ(::link(program.c_str(), link.c_str()), -1);
}

TEST_F(Confinement, WritingThroughALinkThatLeadsOutFails) {
  const std::string link = container + "/Documents/way-out";
  ASSERT_EQ(::symlink(victim.c_str(), link.c_str()), 0);
  EXPECT_EQ(::open(link.c_str(), O_WRONLY | O_CREAT, 0644), -1);
  EXPECT_EQ(errno, EACCES);
  const std::string folder = container + "/Documents/folder-out";
  ASSERT_EQ(::symlink(outside.c_str(), folder.c_str()), 0);
  EXPECT_EQ(::open((folder + "/confinement-victim").c_str(), O_WRONLY | O_CREAT, 0644), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, WritingByAPathThatClimbsOutFails) {
  std::string climb = container;
  for (std::size_t i = 0; i < container.size(); ++i) {
    if (container[i] == '/') climb += "/..";
  }
  EXPECT_EQ(::open((climb + victim).c_str(), O_WRONLY | O_CREAT, 0644), -1);
  EXPECT_EQ(errno, EACCES);
}

TEST_F(Confinement, DataWrittenOutsideByFoundationFailsWithAnError) {
  NSData *const data = [@"text" dataUsingEncoding:NSUTF8StringEncoding];
  NSError *error = nil;
  EXPECT_FALSE([data writeToFile:string(victim) options:0 error:&error]);
  EXPECT_TRUE(error != nil);
  EXPECT_FALSE([data writeToFile:string(victim) atomically:YES]);
}

TEST_F(Confinement, HoldsOnEveryThread) {
  int result = 0;
  std::thread([&] { result = ::open(victim.c_str(), O_WRONLY | O_CREAT, 0644); }).join();
  EXPECT_EQ(result, -1);
}

TEST_F(Confinement, WritingAndMovingInsideTheContainerSucceeds) {
  const std::string first = container + "/Documents/first";
  const std::string second = container + "/Library/second";
  std::ofstream(first) << "text";
  EXPECT_EQ(::rename(first.c_str(), second.c_str()), 0);
  EXPECT_EQ(::truncate(second.c_str(), 1), 0);
  EXPECT_EQ(::unlink(second.c_str()), 0);
}

/// What a program in a container of its own is told when it writes to a path outside, which is its standard error.
std::string toldWhenWritingTo(const std::string &path) {
  const ChildResult result =
      runChild({DEVICE_STARTER, "append", path}, {{"QVDEVICE_CONTAINER", freshFolder()}}, [path] {
        const int descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC);
        ::dup2(descriptor, STDERR_FILENO);
      });
  return result.output;
}

TEST_F(Confinement, TheNamedPipeThatIsStandardErrorCanBeOpenedAgainForWriting) {
  const std::string pipe = freshFolder() + "/pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(toldWhenWritingTo(pipe), "written\n");
}

TEST_F(Confinement, AFileThatIsStandardErrorCannotBeOpenedAgainForWriting) {
  const std::string file = freshFolder() + "/file";
  std::ofstream(file) << "precious";
  EXPECT_EQ(toldWhenWritingTo(file), "Permission denied\n");
  std::string text;
  std::getline(std::ifstream(file), text);
  EXPECT_EQ(text, "precious");
}

TEST_F(Confinement, ANamedPipeThatIsNotStandardErrorCannotBeOpenedForWriting) {
  const std::string pipe = freshFolder() + "/pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(runStarter({"append", pipe}, {{"QVDEVICE_CONTAINER", freshFolder()}}).output, "Permission denied\n");
}

TEST_F(Confinement, TheNullDeviceCanBeWritten) {
  const int descriptor = ::open("/dev/null", O_WRONLY | O_TRUNC | O_CLOEXEC);
  ASSERT_GE(descriptor, 0);
  EXPECT_EQ(::write(descriptor, "x", 1), 1);
  ::close(descriptor);
}

} // namespace
