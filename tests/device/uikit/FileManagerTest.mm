#import "Files.h"

#include <cerrno>
#include <grp.h>
#include <pwd.h>
#include <unistd.h>

namespace {

class FileManager : public Files {};

TEST_F(FileManager, AnItemsAttributesHaveThePlatformsKeys) {
  make(@"file", "12345");
  chmod([path(@"file") UTF8String], 0640);
  const struct stat truth = status(@"file");
  NSDictionary *const attributes = [manager() attributesOfItemAtPath:path(@"file") error:NULL];
  EXPECT_EQ(text([attributes objectForKey:NSFileType]), "NSFileTypeRegular");
  EXPECT_EQ([[attributes objectForKey:NSFileSize] unsignedLongLongValue], 5u);
  EXPECT_EQ([[attributes objectForKey:NSFilePosixPermissions] unsignedIntValue], 0640u);
  EXPECT_EQ([[attributes objectForKey:NSFileReferenceCount] unsignedIntValue], 1u);
  EXPECT_EQ([[attributes objectForKey:NSFileSystemFileNumber] unsignedLongLongValue], truth.st_ino);
  EXPECT_EQ([[attributes objectForKey:NSFileSystemNumber] unsignedLongLongValue], truth.st_dev);
  EXPECT_EQ([[attributes objectForKey:NSFileOwnerAccountID] unsignedIntValue], truth.st_uid);
  EXPECT_EQ([[attributes objectForKey:NSFileGroupOwnerAccountID] unsignedIntValue], truth.st_gid);
  EXPECT_EQ(text([attributes objectForKey:NSFileOwnerAccountName]), "mobile"); // the phone's one user
  EXPECT_EQ(text([attributes objectForKey:NSFileGroupOwnerAccountName]), "mobile");
  EXPECT_FALSE([[attributes objectForKey:NSFileExtensionHidden] boolValue]);
  EXPECT_EQ(text([attributes objectForKey:NSFileProtectionKey]), "NSFileProtectionNone");
  EXPECT_NEAR([[attributes objectForKey:NSFileModificationDate] timeIntervalSince1970],
              truth.st_mtim.tv_sec + truth.st_mtim.tv_nsec * 1e-9, 1e-5);
  EXPECT_NEAR([[attributes objectForKey:NSFileCreationDate] timeIntervalSinceNow], 0, 60);
  EXPECT_EQ([attributes count], 14u);
}

TEST_F(FileManager, TheAttributesAreADictionaryInEveryRespect) {
  make(@"file");
  NSDictionary *const attributes = [manager() attributesOfItemAtPath:path(@"file") error:NULL];
  NSUInteger enumerated = 0;
  for (NSString *key in attributes) {
    ++enumerated;
    EXPECT_TRUE([[attributes valueForKey:key] isEqual:[attributes objectForKey:key]]) << text(key);
  }
  EXPECT_EQ(enumerated, [attributes count]);
  EXPECT_EQ([[attributes allKeys] count], [attributes count]);
  EXPECT_EQ([attributes objectForKey:@"no such key"], nil);
  EXPECT_EQ([attributes objectForKey:(id) @7], nil);
  EXPECT_EQ([attributes valueForKey:@"no such key"], nil);
  NSMutableDictionary *const copy = [[attributes mutableCopy] autorelease];
  EXPECT_TRUE([copy isEqual:attributes]);
  [copy setObject:NSFileProtectionComplete forKey:NSFileProtectionKey];
  EXPECT_EQ(text([attributes objectForKey:NSFileProtectionKey]), "NSFileProtectionNone");
  EXPECT_TRUE([[[attributes copy] autorelease] isEqual:attributes]);
  EXPECT_EQ([attributes fileSize], 3u);
}

TEST_F(FileManager, AMutableCopyOfTheAttributesIsAMutableDictionaryInEveryRespect) {
  make(@"file");
  NSDictionary *const attributes = [manager() attributesOfItemAtPath:path(@"file") error:NULL];
  NSMutableDictionary *const copy = [[attributes mutableCopy] autorelease];
  [copy setObject:NSFileProtectionComplete forKey:NSFileProtectionKey];
  EXPECT_EQ([copy count], 14u);
  EXPECT_EQ(text([copy objectForKey:NSFileProtectionKey]), "NSFileProtectionComplete");
  NSMutableDictionary *const second = [[copy mutableCopy] autorelease];
  [second setObject:@7 forKey:@"own"];
  [second removeObjectForKey:NSFileType];
  [second setObject:@0600 forKey:NSFilePosixPermissions];
  EXPECT_EQ([second count], 14u);
  EXPECT_EQ([second objectForKey:NSFileType], nil);
  EXPECT_EQ(text([copy objectForKey:NSFileType]), "NSFileTypeRegular");
  NSUInteger enumerated = 0;
  for (NSString *key in second)
    enumerated += [second objectForKey:key] != nil;
  EXPECT_EQ(enumerated, 14u);
  EXPECT_TRUE([manager() setAttributes:second ofItemAtPath:path(@"file") error:NULL]);
  EXPECT_EQ(status(@"file").st_mode & 07777, 0600u);
  EXPECT_EQ(stored(@"file"), "NSFileProtectionComplete");
  [second setObject:@"perhaps" forKey:NSFileProtectionKey];
  EXPECT_FALSE([manager() setAttributes:second ofItemAtPath:path(@"file") error:NULL]);
  [second removeAllObjects];
  EXPECT_EQ([second count], 0u);
}

TEST_F(FileManager, AttributesOfOneItemGivenToAnotherChangeIt) {
  make(@"one");
  make(@"two");
  chmod([path(@"one") UTF8String], 0600);
  store(@"one", "NSFileProtectionComplete");
  NSDictionary *const attributes = [manager() attributesOfItemAtPath:path(@"one") error:NULL];
  for (NSDictionary *each in @[ attributes, [[attributes mutableCopy] autorelease] ]) {
    chmod([path(@"two") UTF8String], 0644);
    EXPECT_TRUE([manager() setAttributes:each ofItemAtPath:path(@"two") error:NULL]);
    EXPECT_EQ(status(@"two").st_mode & 07777, 0600u);
    EXPECT_EQ(stored(@"two"), "NSFileProtectionComplete");
  }
}

TEST_F(FileManager, AKeyThatIsSpelledAnewFindsItsValue) {
  make(@"file");
  NSString *const key = [NSString stringWithFormat:@"%@%@", @"NSFileProtection", @"Key"];
  NSDictionary *const attributes = [manager() attributesOfItemAtPath:path(@"file") error:NULL];
  EXPECT_EQ(text([attributes objectForKey:key]), "NSFileProtectionNone");
}

TEST_F(FileManager, AFolderALinkAndAPipeHaveTheirTypes) {
  mkdir([path(@"folder") UTF8String], 0755);
  symlink("folder", [path(@"link") UTF8String]);
  mkfifo([path(@"pipe") UTF8String], 0600);
  EXPECT_EQ(text([[manager() attributesOfItemAtPath:path(@"folder") error:NULL] fileType]), "NSFileTypeDirectory");
  EXPECT_EQ(text([[manager() attributesOfItemAtPath:path(@"link") error:NULL] fileType]), "NSFileTypeSymbolicLink");
  EXPECT_EQ(text([[manager() attributesOfItemAtPath:path(@"pipe") error:NULL] fileType]), "NSFileTypeUnknown");
}

TEST_F(FileManager, AMissingItemHasNoAttributesAndAnErrorThatSaysSo) {
  NSError *error = nil;
  EXPECT_EQ([manager() attributesOfItemAtPath:path(@"missing") error:&error], nil);
  expectError(error, NSFileReadNoSuchFileError, path(@"missing"), ENOENT);
  EXPECT_EQ([manager() attributesOfItemAtPath:path(@"missing") error:NULL], nil);
  EXPECT_EQ([manager() attributesOfItemAtPath:nil error:&error], nil);
  EXPECT_EQ([manager() attributesOfItemAtPath:@"" error:&error], nil);
}

TEST_F(FileManager, SettingAttributesOfAMissingItemFails) {
  NSError *error = nil;
  EXPECT_FALSE([manager() setAttributes:@{NSFileProtectionKey : NSFileProtectionNone} ofItemAtPath:path(@"missing")
                                  error:&error]);
  expectError(error, NSFileNoSuchFileError, path(@"missing"), ENOENT);
  EXPECT_FALSE([manager() setAttributes:@{} ofItemAtPath:path(@"missing") error:NULL]);
}

TEST_F(FileManager, SettingNoDictionaryAtAllFailsWithAnError) {
  make(@"file");
  NSError *error = nil;
  NSDictionary *const none = nil;
  EXPECT_FALSE([manager() setAttributes:none ofItemAtPath:path(@"file") error:&error]);
  expectError(error, NSFileWriteUnknownError, path(@"file"), EINVAL);
  EXPECT_FALSE([manager() setAttributes:none ofItemAtPath:path(@"file") error:NULL]);
}

TEST_F(FileManager, SettingAnEmptyDictionaryChangesNothingAndSucceeds) {
  make(@"file");
  EXPECT_TRUE([manager() setAttributes:@{} ofItemAtPath:path(@"file") error:NULL]);
}

TEST_F(FileManager, PermissionsAndTheModificationDateAreSet) {
  make(@"file");
  NSDate *const date = [NSDate dateWithTimeIntervalSince1970:1000000000.25];
  EXPECT_TRUE([manager() setAttributes:(
                                           @{NSFilePosixPermissions : @0600,
                                             NSFileModificationDate : date})
                          ofItemAtPath:path(@"file")
                                 error:NULL]);
  const struct stat after = status(@"file");
  EXPECT_EQ(after.st_mode & 07777, 0600u);
  EXPECT_EQ(after.st_mtim.tv_sec, 1000000000);
  EXPECT_NEAR(after.st_mtim.tv_nsec, 250000000, 1000);
}

TEST_F(FileManager, HandingBackAllAttributesLeavesTheItemAsItWas) {
  make(@"file");
  chmod([path(@"file") UTF8String], 0604);
  const struct stat before = status(@"file");
  NSDictionary *const attributes = [manager() attributesOfItemAtPath:path(@"file") error:NULL];
  NSError *error = nil;
  EXPECT_TRUE([manager() setAttributes:attributes ofItemAtPath:path(@"file") error:&error]);
  const struct stat after = status(@"file");
  EXPECT_EQ(after.st_mode, before.st_mode);
  EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
  EXPECT_EQ(after.st_uid, before.st_uid);
}

TEST_F(FileManager, AttributesOfTheWrongKindAreRefusedBeforeAnythingIsChanged) {
  make(@"file");
  chmod([path(@"file") UTF8String], 0644);
  NSError *error = nil;
  EXPECT_FALSE([manager() setAttributes:(
                                            @{NSFilePosixPermissions : @0600,
                                              NSFileModificationDate : @"yesterday"})
                           ofItemAtPath:path(@"file")
                                  error:&error]);
  expectError(error, NSFileWriteUnknownError, path(@"file"), EINVAL);
  EXPECT_EQ(status(@"file").st_mode & 07777, 0644u);
}

TEST_F(FileManager, AnOwnerWhomNobodyKnowsIsRefused) {
  make(@"file");
  EXPECT_FALSE([manager() setAttributes:@{NSFileOwnerAccountName : @"nobody of that name"} ofItemAtPath:path(@"file")
                                  error:NULL]);
}

TEST_F(FileManager, KeysThatTheFileSystemDoesNotKnowAreLeftAside) {
  make(@"file");
  EXPECT_TRUE([manager() setAttributes:(
                                           @{NSFileExtensionHidden : @1,
                                             @"of an app" : @2,
                                             NSFileSize : @99})
                          ofItemAtPath:path(@"file")
                                 error:NULL]);
  EXPECT_EQ(contents(@"file"), "old");
}

TEST_F(FileManager, AFolderIsMadeWithTheFoldersAboveIt) {
  EXPECT_TRUE([manager() createDirectoryAtPath:path(@"a/b/c") withIntermediateDirectories:YES attributes:nil
                                         error:NULL]);
  EXPECT_TRUE(S_ISDIR(status(@"a/b/c").st_mode));
  EXPECT_TRUE([manager() createDirectoryAtPath:path(@"a/b/c") withIntermediateDirectories:YES attributes:nil
                                         error:NULL]);
  EXPECT_TRUE([manager() createDirectoryAtPath:path(@"x/y/") withIntermediateDirectories:YES attributes:nil
                                         error:NULL]);
}

TEST_F(FileManager, AFolderThatIsThereIsAnErrorWhenTheOnesAboveWereNotAskedFor) {
  NSError *error = nil;
  ASSERT_TRUE([manager() createDirectoryAtPath:path(@"a") withIntermediateDirectories:NO attributes:nil error:NULL]);
  EXPECT_FALSE([manager() createDirectoryAtPath:path(@"a") withIntermediateDirectories:NO attributes:nil error:&error]);
  expectError(error, NSFileWriteFileExistsError, path(@"a"), EEXIST);
}

TEST_F(FileManager, AFolderWhereAFileStandsIsAnErrorInEveryCase) {
  make(@"file");
  for (const BOOL intermediates : {NO, YES}) {
    NSError *error = nil;
    EXPECT_FALSE([manager() createDirectoryAtPath:path(@"file") withIntermediateDirectories:intermediates attributes:nil
                                            error:&error]);
    expectError(error, NSFileWriteFileExistsError, path(@"file"), EEXIST);
  }
  NSError *error = nil;
  EXPECT_FALSE([manager() createDirectoryAtPath:path(@"file/below") withIntermediateDirectories:YES attributes:nil
                                          error:&error]);
  expectError(error, NSFileWriteUnknownError, path(@"file/below"), ENOTDIR);
}

TEST_F(FileManager, AFolderWithoutAParentIsAnErrorWhenTheOnesAboveWereNotAskedFor) {
  NSError *error = nil;
  EXPECT_FALSE([manager() createDirectoryAtPath:path(@"a/b") withIntermediateDirectories:NO attributes:nil
                                          error:&error]);
  expectError(error, NSFileNoSuchFileError, path(@"a/b"), ENOENT);
  EXPECT_FALSE([manager() createDirectoryAtPath:path(@"a/b") withIntermediateDirectories:NO attributes:nil error:NULL]);
}

TEST_F(FileManager, AFolderWithoutAPathOrWithTheURLOfAServerIsNotMade) {
  NSError *error = nil;
  NSString *const none = nil;
  EXPECT_FALSE([manager() createDirectoryAtPath:none withIntermediateDirectories:YES attributes:nil error:&error]);
  EXPECT_EQ([error code], NSFileNoSuchFileError);
  for (NSURL *each in @[ [NSURL URLWithString:@"http://example.com/x"], [NSNull null] ]) {
    error = nil;
    NSURL *const bad = [each isKindOfClass:[NSURL class]] ? each : nil;
    EXPECT_FALSE([manager() createDirectoryAtURL:bad withIntermediateDirectories:YES attributes:nil error:&error]);
    EXPECT_EQ([error code], NSFileWriteUnsupportedSchemeError);
    EXPECT_FALSE([manager() createDirectoryAtURL:bad withIntermediateDirectories:YES attributes:nil error:NULL]);
  }
}

TEST_F(FileManager, AFileIsMadeAnewOrReplacedOrEmpty) {
  EXPECT_TRUE([manager() createFileAtPath:path(@"file") contents:dataOf("one") attributes:nil]);
  EXPECT_EQ(contents(@"file"), "one");
  EXPECT_TRUE([manager() createFileAtPath:path(@"file") contents:dataOf("two") attributes:nil]);
  EXPECT_EQ(contents(@"file"), "two");
  EXPECT_TRUE([manager() createFileAtPath:path(@"file") contents:nil attributes:nil]);
  EXPECT_EQ(contents(@"file"), "");
}

TEST_F(FileManager, AFileIsNotMadeInAMissingFolderOverAFolderOrWithoutAPath) {
  mkdir([path(@"folder") UTF8String], 0755);
  NSString *const none = nil;
  EXPECT_FALSE([manager() createFileAtPath:path(@"no/such/file") contents:dataOf("x") attributes:nil]);
  EXPECT_FALSE([manager() createFileAtPath:path(@"folder") contents:dataOf("x") attributes:nil]);
  EXPECT_FALSE([manager() createFileAtPath:none contents:dataOf("x") attributes:nil]);
  EXPECT_EQ([names() count], 1u);
}

} // namespace
