// What becomes of the home directory.
#include "Wipe.h"

#include <dlfcn.h>
#include <objc/runtime.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace {

using Lines = std::vector<std::string>;

NSString *executablePath = nil;
NSString *scriptedExecutable(id, SEL) { return executablePath; }
NSArray *noContents(id, SEL, NSString *, NSError **) { return nil; }

/// The wipe's own line for an item below the home directory.
std::string removing(const std::string &path) { return "4 Removing item " + wipe::home(path); }

void cleanUp() { [wipe::util() _cleanUpFileSystem]; }

// What the platform says of its folders, where a test has its own idea; empty and nil are the device's answers.
std::string temporaryFolder;
NSArray *libraryFolders = nil;
NSArray *documentFolders = nil;

template <class Function> Function ofTheDevice(Function, const char *name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// This program's own come before the device's.

NSString *NSTemporaryDirectory() {
  if (!temporaryFolder.empty()) return [NSString stringWithUTF8String:temporaryFolder.c_str()];
  return ofTheDevice(&NSTemporaryDirectory, "NSTemporaryDirectory")();
}

NSArray *NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory, NSSearchPathDomainMask domains,
                                             BOOL expandTilde) {
  if (directory == NSLibraryDirectory && libraryFolders) return libraryFolders;
  if (directory == NSDocumentDirectory && documentFolders) return documentFolders;
  return ofTheDevice(&NSSearchPathForDirectoriesInDomains, "NSSearchPathForDirectoriesInDomains")(directory, domains,
                                                                                                  expandTilde);
}

TEST_F(Wipe, EmptiesTheThreeFoldersSkipsTheBundleAndRemovesWhatElseThereIs) {
  // The app's bundle is the folder that the executable lies in.
  const std::string bundle =
      [[[[[NSBundle mainBundle] executablePath] stringByDeletingLastPathComponent] lastPathComponent] UTF8String];
  wipe::makeFile("Documents/a/b.txt");
  wipe::makeFile("Library/Caches/x");
  wipe::makeFile("tmp/y");
  wipe::makeFile("Extra/deep/er/file");
  wipe::makeFile(".hidden");
  wipe::makeFile(bundle + "/executable");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Library", bundle, bundle + "/executable", "tmp"}));
  Lines expected = {"3 Skipping directory: " + wipe::home(bundle),
                    removing("Documents/a"),
                    removing("Documents/a/b.txt"),
                    removing("Library/Caches"),
                    removing("Library/Caches/x"),
                    removing("Library/Preferences"),
                    removing("tmp/y")};
  std::ranges::sort(expected);
  EXPECT_EQ(wipe::sortedLog(), expected);
  const auto at = [](const std::string &line) { return std::ranges::find(wipe::log(), line); };
  EXPECT_LT(at(removing("Documents/a")), at(removing("Documents/a/b.txt"))) << "a folder before what it holds";
}

TEST_F(Wipe, LogsWhatWentWithItsFolderAndSkipsItSilently) {
  wipe::makeFile("Documents/a/b/c/d.txt");
  cleanUp();
  Lines documents;
  for (const std::string &line : wipe::log()) {
    if (line.find("/Documents/") != std::string::npos) documents.push_back(line);
  }
  EXPECT_EQ(documents, (Lines{removing("Documents/a"), removing("Documents/a/b"), removing("Documents/a/b/c"),
                              removing("Documents/a/b/c/d.txt")}));
  EXPECT_EQ(wipe::log(0), (Lines{}));
}

TEST_F(Wipe, OfAHomeThatWasWipedFindsNothingAndLogsNothing) {
  wipe::makeFile("Documents/a/b.txt");
  cleanUp();
  wipe::captureLog();
  cleanUp();
  EXPECT_EQ(wipe::log(), (Lines{}));
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Library", "tmp"}));
}

TEST_F(Wipe, ComparesFolderNamesExactly) {
  wipe::makeFile("documents/a");
  wipe::makeFile("Documents2/a");
  wipe::makeFile("Extra/Documents/a");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Library", "tmp"}));
  for (const std::string &line : wipe::log())
    EXPECT_EQ(line.rfind("/a"), std::string::npos) << line;
}

TEST_F(Wipe, EmptiesTheFirstFolderOfEachKindThatThePlatformNames) {
  temporaryFolder = "/elsewhere/scratch/";
  libraryFolders = [@[ @"/elsewhere/Books", @"/elsewhere/Library" ] retain];
  documentFolders = [@[ @"Papers", @"Documents" ] retain];
  for (const char *folder : {"scratch", "Books", "Papers", "tmp", "Library", "Documents"})
    wipe::makeFile(std::string(folder) + "/file");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Books", "Papers", "scratch"}));
}

TEST_F(Wipe, KeepsNoFolderOfAKindThatThePlatformHasNot) {
  libraryFolders = [@[] retain];
  documentFolders = [@[] retain];
  for (const char *folder : {"tmp", "Library", "Documents"})
    wipe::makeFile(std::string(folder) + "/file");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"tmp"}));
}

TEST_F(Wipe, LogsAnItemBeforeItIsRemoved) {
  wipe::makeFile("Documents/a/b");
  static std::vector<bool> there;
  wipe::captureLog([](const std::string &line) {
    if (line.find("/Documents/") != std::string::npos) there.push_back(wipe::exists(line.substr(line.find('/'))));
  });
  cleanUp();
  EXPECT_EQ(there, (std::vector<bool>{true, false})) << "the folder, and what has gone with it";
}

TEST_F(Wipe, KeepsAFileThatBearsAWalkedFoldersName) {
  ASSERT_EQ(rmdir(wipe::home("Documents").c_str()), 0);
  wipe::makeFile("Documents");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Library", "tmp"}));
  EXPECT_EQ(wipe::log(0), (Lines{}));
}

TEST_F(Wipe, SkipsABundleThatBearsAWalkedFoldersName) {
  executablePath = [@"/somewhere/else/tmp/Program" retain];
  method_setImplementation(class_getInstanceMethod([NSBundle class], @selector(executablePath)),
                           (IMP)scriptedExecutable);
  wipe::makeFile("tmp/y");
  wipe::makeFile("Documents/a");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Library", "tmp", "tmp/y"}));
  EXPECT_EQ(wipe::log(3), (Lines{"3 Skipping directory: " + wipe::home("tmp")}));
}

TEST_F(Wipe, SkipsNoFolderWhoseNameOnlyBeginsAsTheBundlesOrEndsSo) {
  executablePath = [@"/somewhere/Host.app/Program" retain];
  method_setImplementation(class_getInstanceMethod([NSBundle class], @selector(executablePath)),
                           (IMP)scriptedExecutable);
  for (const char *folder : {"Host.app", "Host.app 2", "Host", "My Host.app", "host.app"})
    wipe::makeFile(std::string(folder) + "/file");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Host.app", "Host.app/file", "Library", "tmp"}));
}

TEST_F(Wipe, WithoutAnExecutablesPathSkipsNothing) {
  executablePath = nil;
  method_setImplementation(class_getInstanceMethod([NSBundle class], @selector(executablePath)),
                           (IMP)scriptedExecutable);
  wipe::makeFile("bin/x");
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), (Lines{"Documents", "Library", "tmp"}));
  EXPECT_EQ(wipe::log(3), (Lines{}));
}

TEST_F(Wipe, LeavesTheFilesUntouchedWithoutALineWhenTheHomeCannotBeListed) {
  wipe::makeFile("Documents/a/b.txt");
  wipe::makeFile("Extra/x");
  const Lines before = wipe::tree(wipe::home());
  method_setImplementation(class_getInstanceMethod([NSFileManager class], @selector(contentsOfDirectoryAtPath:error:)),
                           (IMP)noContents);
  cleanUp();
  EXPECT_EQ(wipe::tree(wipe::home()), before);
  EXPECT_EQ(wipe::log(), (Lines{}));
}
