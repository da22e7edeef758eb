// Going through folders that somebody changes meanwhile.
#include "Foundation/FolderWalk.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "support/Child.h"

namespace {

namespace fs = std::filesystem;

/// Puts a link in the place of each folder that it is told of.
class Swapping : public qvdevice::FolderVisitor {
public:
  Swapping(std::string root, std::string target) : root_(std::move(root)), target_(std::move(target)) {}

  int found(int, const qvdevice::FolderEntry& entry, const std::string& path) override {
    paths.push_back(path);
    if (entry.isFolder) {
      fs::rename(root_ + "/" + path, root_ + "/moved away");
      fs::create_directory_symlink(target_, root_ + "/" + path);
    }
    return 0;
  }
  int unreadable(int, const std::string&, const std::string&, int error) override {
    reason = error;
    return 0;
  }

  std::vector<std::string> paths;
  int reason = 0;

private:
  std::string root_;
  std::string target_;
};

} // namespace

TEST(FolderWalk, doesNotFollowALinkThatHasTakenAFoldersPlaceSinceItWasListed) {
  const std::string root = freshFolder();
  const std::string outside = freshFolder();
  std::ofstream(outside + "/precious") << "data";
  fs::create_directory(root + "/folder");
  std::ofstream(root + "/folder/file") << "data";
  Swapping visitor(root, outside);
  EXPECT_EQ(qvdevice::walkFolder(root.c_str(), qvdevice::RootLink::refused, visitor), 0);
  EXPECT_EQ(visitor.paths, std::vector<std::string>{"folder"});
  EXPECT_TRUE(visitor.reason == ELOOP || visitor.reason == ENOTDIR) << visitor.reason;
}

TEST(FolderWalk, refusesARootThatIsALinkUnlessItIsToBeFollowed) {
  const std::string outside = freshFolder();
  std::ofstream(outside + "/file") << "data";
  const std::string link = freshFolder() + "/link";
  fs::create_directory_symlink(outside, link);
  Swapping refused("", ""), followed("", "");
  EXPECT_NE(qvdevice::walkFolder(link.c_str(), qvdevice::RootLink::refused, refused), 0);
  EXPECT_TRUE(refused.paths.empty());
  EXPECT_EQ(qvdevice::walkFolder(link.c_str(), qvdevice::RootLink::followed, followed), 0);
  EXPECT_EQ(followed.paths, std::vector<std::string>{"file"});
}
