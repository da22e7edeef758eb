// A folder is one console's at a time.
#include "FolderLock.h"

#include <csignal>
#include <cstdlib>
#include <optional>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "Failure.h"

namespace {

namespace fs = std::filesystem;
using qvdevice::FolderLock;

class LockedFolder : public testing::Test {
protected:
  LockedFolder() {
    std::string pattern = fs::temp_directory_path() / "qvdevice-test.XXXXXX";
    path_ = mkdtemp(pattern.data());
  }
  ~LockedFolder() override { fs::remove_all(path_); }

  std::string refusal() const {
    try {
      const FolderLock lock(path_, "the device");
    } catch (const qvdevice::Failure& failure) {
      EXPECT_EQ(failure.status(), qvdevice::kCannotStart);
      return failure.what();
    }
    return "locked";
  }

  fs::path path_;
};

TEST_F(LockedFolder, isRefusedToASecondWithASentence) {
  const FolderLock lock(path_, "the device");
  EXPECT_EQ(refusal(), "there is a console already for the device " + path_.string() +
                           "; end that one first, or name another folder");
}

TEST_F(LockedFolder, isFreeAgainAndEmptyAfterwards) {
  {
    const FolderLock lock(path_, "the device");
  }
  EXPECT_EQ(refusal(), "locked");
  EXPECT_TRUE(fs::is_empty(path_));
}

TEST_F(LockedFolder, isFreeAgainWhenTheOtherProcessWasKilled) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t other = fork();
  if (other == 0) {
    const FolderLock lock(path_, "the device");
    (void)!write(ready[1], "x", 1);
    pause();
    _exit(0);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_NE(refusal(), "locked");
  kill(other, SIGKILL);
  waitpid(other, nullptr, 0);
  EXPECT_EQ(refusal(), "locked");
  close(ready[0]);
  close(ready[1]);
}

TEST_F(LockedFolder, thatIsNotThereIsRefusedWithTheReason) {
  const fs::path missing = path_ / "missing";
  try {
    const FolderLock lock(missing, "the device");
    FAIL() << "locked";
  } catch (const qvdevice::Failure& failure) {
    EXPECT_EQ(std::string(failure.what()),
              "cannot lock the device " + missing.string() + ": No such file or directory");
  }
}

} // namespace
