// Everything that tells an app where its files belong answers from the container.

#include <gtest/gtest.h>
#include <unistd.h>

#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "Child.h"
#include "Pool.h"

namespace {

class Container : public PoolTest {
protected:
  std::string container = [] {
    char resolved[PATH_MAX];
    return std::string(::realpath(std::getenv("QVDEVICE_CONTAINER"), resolved));
  }();

  std::string searched(NSSearchPathDirectory directory) {
    NSArray *const paths = NSSearchPathForDirectoriesInDomains(directory, NSUserDomainMask, YES);
    EXPECT_EQ([paths count], 1U);
    return [paths count] == 1 ? [[paths objectAtIndex:0] UTF8String] : "";
  }
};

TEST_F(Container, IsTheHomeDirectory) {
  EXPECT_EQ([NSHomeDirectory() UTF8String], container);
  EXPECT_EQ([QVDeviceContainer() UTF8String], container);
}

TEST_F(Container, HoldsTheTemporaryDirectoryWhichEndsInASlash) {
  EXPECT_EQ([NSTemporaryDirectory() UTF8String], container + "/tmp/");
}

TEST_F(Container, HoldsEveryFolderOfTheUserDomain) {
  EXPECT_EQ(searched(NSDocumentDirectory), container + "/Documents");
  EXPECT_EQ(searched(NSLibraryDirectory), container + "/Library");
  EXPECT_EQ(searched(NSCachesDirectory), container + "/Library/Caches");
  EXPECT_EQ(searched(NSApplicationSupportDirectory), container + "/Library/Application Support");
  EXPECT_EQ(searched(NSDesktopDirectory), container + "/Desktop");
  EXPECT_EQ(searched(NSDownloadsDirectory), container + "/Downloads");
}

TEST_F(Container, IsWrittenAsATildeWhenTheTildeIsNotToBeExpanded) {
  NSArray *const paths = NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSUserDomainMask, NO);
  EXPECT_TRUE([paths isEqual:@[ @"~/Documents" ]]);
}

TEST_F(Container, ComesFirstInAllDomains) {
  NSArray *const paths = NSSearchPathForDirectoriesInDomains(NSLibraryDirectory, NSAllDomainsMask, YES);
  ASSERT_GT([paths count], 1U);
  EXPECT_EQ([[paths objectAtIndex:0] UTF8String], container + "/Library");
}

TEST_F(Container, IsInNoOtherDomain) {
  for (NSString *path in NSSearchPathForDirectoriesInDomains(NSLibraryDirectory, NSLocalDomainMask | NSSystemDomainMask,
                                                             YES)) {
    EXPECT_NE(std::string([path UTF8String]).find("/GNUstep"), std::string::npos);
  }
  EXPECT_EQ([NSSearchPathForDirectoriesInDomains(NSDocumentDirectory, NSSystemDomainMask, YES) count], 0U);
}

TEST_F(Container, IsAnsweredAsURLsByTheFileManager) {
  NSArray *const urls = [[NSFileManager defaultManager] URLsForDirectory:NSDocumentDirectory
                                                               inDomains:NSUserDomainMask];
  ASSERT_EQ([urls count], 1U);
  EXPECT_TRUE([[urls objectAtIndex:0] isFileURL]);
  EXPECT_EQ([[[urls objectAtIndex:0] path] UTF8String], container + "/Documents");
}

TEST_F(Container, IsWhatATildeExpandsTo) {
  EXPECT_EQ([[@"~/note" stringByExpandingTildeInPath] UTF8String], container + "/note");
  EXPECT_EQ(
      [[[NSString stringWithUTF8String:(container + "/note").c_str()] stringByAbbreviatingWithTildeInPath] UTF8String],
      std::string("~/note"));
}

TEST_F(Container, IsTheHomeOfThePhonesUserAndNobodyElse) {
  EXPECT_TRUE([NSUserName() isEqual:@"mobile"]);
  EXPECT_EQ([NSHomeDirectoryForUser(@"mobile") UTF8String], container);
  EXPECT_TRUE(NSHomeDirectoryForUser(@"root") == nil);
  EXPECT_TRUE(NSHomeDirectoryForUser(nil) == nil);
}

TEST_F(Container, IsTheHomeInTheEnvironment) {
  NSDictionary *const environment = [[NSProcessInfo processInfo] environment];
  for (const char *variable : {"HOME", "CFFIXED_USER_HOME"}) {
    EXPECT_EQ(std::getenv(variable), container);
    EXPECT_EQ([[environment objectForKey:[NSString stringWithUTF8String:variable]] UTF8String], container);
  }
  EXPECT_EQ(std::getenv("TMPDIR"), container + "/tmp/");
}

TEST_F(Container, KeepsTheUserDefaults) {
  NSUserDefaults *const defaults = [NSUserDefaults standardUserDefaults];
  [defaults setObject:@"kept" forKey:@"word"];
  ASSERT_TRUE([defaults synchronize]);
  NSString *const folder = [NSHomeDirectory() stringByAppendingPathComponent:@"Library/Preferences"];
  bool found = false;
  for (NSString *name in [[NSFileManager defaultManager] contentsOfDirectoryAtPath:folder error:NULL]) {
    if (![[name pathExtension] isEqual:@"plist"]) continue;
    NSDictionary *const stored =
        [NSDictionary dictionaryWithContentsOfFile:[folder stringByAppendingPathComponent:name]];
    found = found || [[stored objectForKey:@"word"] isEqual:@"kept"];
  }
  EXPECT_TRUE(found);
}

TEST_F(Container, SettingsHaveEveryKeyWithoutAnyGiven) {
  EXPECT_TRUE(([QVDeviceSettings() isEqual:@{
    @"systemVersion" : @"17.0",
    @"idiom" : @"phone",
    @"defaultProtection" : @"NSFileProtectionNone",
    @"terminateWithSuccess" : @YES,
    @"persistentDomainNames" : @YES,
    @"printingAvailable" : @YES
  }]));
}

} // namespace
