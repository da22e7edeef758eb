#include "Protection.h"

namespace {

class FileManager : public Protection {
protected:
  NSFileManager *manager() { return [NSFileManager defaultManager]; }
};

} // namespace

TEST_F(FileManager, AFolderCreatedByPathOrByURLIsProtected) {
  EXPECT_TRUE([manager() createDirectoryAtPath:path(@"a") withIntermediateDirectories:NO attributes:nil error:NULL]);
  EXPECT_TRUE([manager() createDirectoryAtURL:url(@"b") withIntermediateDirectories:NO attributes:nil error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(classOf(@"b"), kRaised);
}

TEST_F(FileManager, OfFoldersCreatedOnTheWayOnlyTheLastIsProtected) {
  EXPECT_TRUE([manager() createDirectoryAtPath:path(@"a/b/c") withIntermediateDirectories:YES attributes:nil
                                         error:NULL]);
  EXPECT_EQ(classOf(@"a"), "");
  EXPECT_EQ(classOf(@"a/b"), "");
  EXPECT_EQ(classOf(@"a/b/c"), kRaised);
  EXPECT_TRUE([manager() createDirectoryAtURL:url(@"d/e") withIntermediateDirectories:YES attributes:nil error:NULL]);
  EXPECT_EQ(classOf(@"d"), "");
  EXPECT_EQ(classOf(@"d/e"), kRaised);
}

TEST_F(FileManager, AFolderThatCannotBeCreatedGivesThePlatformsErrorAndChangesNothing) {
  ASSERT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
  support::storeClass(path(@"a"), kNone);
  NSError *error = nil;
  EXPECT_FALSE([manager() createDirectoryAtPath:path(@"a") withIntermediateDirectories:NO attributes:nil error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_EQ(classOf(@"a"), kNone);
  error = nil;
  EXPECT_FALSE([manager() createDirectoryAtURL:url(@"a") withIntermediateDirectories:NO attributes:nil error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_EQ(classOf(@"a"), kNone);
}

TEST_F(FileManager, AFileCreatedIsProtectedWithItsContentsAndAttributes) {
  EXPECT_TRUE([manager() createFileAtPath:path(@"a") contents:bytes() attributes:@{NSFilePosixPermissions : @0600}]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_TRUE([[NSData dataWithContentsOfFile:path(@"a")] isEqual:bytes()]);
  NSDictionary *attributes = [manager() attributesOfItemAtPath:path(@"a") error:NULL];
  EXPECT_EQ([[attributes objectForKey:NSFilePosixPermissions] intValue], 0600);
}

TEST_F(FileManager, AFileCreatedWithAClassKeepsItUnlessItIsNone) {
  EXPECT_TRUE([manager() createFileAtPath:path(@"a") contents:bytes()
                               attributes:@{NSFileProtectionKey : NSFileProtectionComplete}]);
  EXPECT_TRUE([manager() createFileAtPath:path(@"b") contents:bytes()
                               attributes:@{NSFileProtectionKey : NSFileProtectionNone}]);
  EXPECT_EQ(classOf(@"a"), kComplete);
  EXPECT_EQ(classOf(@"b"), kRaised);
}

TEST_F(FileManager, AFileThatCannotBeCreatedGivesNoAndLogsNothing) {
  EXPECT_FALSE([manager() createFileAtPath:impossible() contents:bytes() attributes:nil]);
  EXPECT_FALSE([manager() createFileAtPath:occupied() contents:bytes() attributes:nil]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(FileManager, SettingNoProtectionSucceedsAndTheItemEndsProtected) {
  ASSERT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
  NSError *error = nil;
  EXPECT_TRUE([manager() setAttributes:@{NSFileProtectionKey : NSFileProtectionNone} ofItemAtPath:path(@"a")
                                 error:&error]);
  EXPECT_EQ(error, nil);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(FileManager, SettingAnotherClassIsLeftAlone) {
  ASSERT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
  EXPECT_TRUE([manager() setAttributes:@{NSFileProtectionKey : NSFileProtectionComplete} ofItemAtPath:path(@"a")
                                 error:NULL]);
  EXPECT_EQ(classOf(@"a"), kComplete);
}

TEST_F(FileManager, SettingSomethingElseRaisesAnUnprotectedItemAndKeepsWhatWasSet) {
  ASSERT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
  support::storeClass(path(@"a"), kNone);
  EXPECT_TRUE([manager() setAttributes:@{NSFilePosixPermissions : @0640} ofItemAtPath:path(@"a") error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  NSDictionary *attributes = [manager() attributesOfItemAtPath:path(@"a") error:NULL];
  EXPECT_EQ([[attributes objectForKey:NSFilePosixPermissions] intValue], 0640);
}

TEST_F(FileManager, SettingAttributesOfAMissingItemGivesThePlatformsErrorAndLogsNothing) {
  NSError *error = nil;
  EXPECT_FALSE([manager() setAttributes:@{NSFilePosixPermissions : @0640} ofItemAtPath:path(@"none") error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_FALSE([manager() setAttributes:@{NSFilePosixPermissions : @0640} ofItemAtPath:path(@"none") error:NULL]);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(FileManager, SettingAttributesThatThePlatformRefusesLeavesTheProtection) {
  NSError *error = nil;
  EXPECT_FALSE([manager() setAttributes:@{NSFilePosixPermissions : @"no number"} ofItemAtPath:occupied() error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_TRUE(support::log().empty());
}
