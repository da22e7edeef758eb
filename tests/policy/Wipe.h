// The wipe, and what it finds: for tests that run in a device container and nowhere else.
#pragma once

#import <Foundation/Foundation.h>

#include <string>
#include <vector>

#include <gtest/gtest.h>

/// The steps, class methods of ZorbelUtil.
@interface NSObject (QVWipe)
+ (void)_cleanUpKeychain;
+ (void)_cleanUpPreferences;
+ (void)_cleanUpFileSystem;
@end

namespace wipe {

/// Whether this process's home is the container that it was given. What runs a wipe asks this first.
bool homeIsTheContainer();

/// The library's class; nil when it is not loaded.
Class util();

/// From now on the SDK's lines are kept here, "<level> <text>", and not written: the SDK's own log lies in the home
/// that is wiped. `alsoCalled`, if not null, is called with each.
void captureLog(void (*alsoCalled)(const std::string &line) = nullptr);
const std::vector<std::string> &log();
std::vector<std::string> log(int level);
/// All lines in alphabetical order: what a folder lists first is the file system's business.
std::vector<std::string> sortedLog();

/// Makes the file, and the folders that lead to it, below the home directory. With bare calls, any bytes.
void makeFile(const std::string &path, const std::string &contents = "data");
void makeFolder(const std::string &path);
void makeLink(const std::string &path, const std::string &destination);

/// The home directory's absolute path, and one below it.
std::string home();
std::string home(const std::string &path);

/// Every item beneath the folder, paths from it on, in alphabetical order.
std::vector<std::string> tree(const std::string &folder);

bool exists(const std::string &path);

} // namespace wipe

/// A test that may wipe: it does not begin unless its home is its container.
class Wipe : public testing::Test {
protected:
  void SetUp() override;
  void TearDown() override;

private:
  NSAutoreleasePool *pool_ = nil;
};
