#import "Files.h"

#include <cerrno>
#include <unistd.h>

namespace {

class DataProtection : public Files {
protected:
  std::string answered(NSString *name) const {
    return text([[manager() attributesOfItemAtPath:path(name) error:NULL] objectForKey:NSFileProtectionKey]);
  }
  BOOL set(NSString *name, id className, NSError **error = NULL) const {
    return [manager() setAttributes:@{NSFileProtectionKey : className} ofItemAtPath:path(name) error:error];
  }
};

TEST_F(DataProtection, EveryConstantIsItsOwnName) {
  EXPECT_EQ(text(NSFileProtectionKey), "NSFileProtectionKey");
  EXPECT_EQ(text(NSFileProtectionNone), "NSFileProtectionNone");
  EXPECT_EQ(text(NSFileProtectionComplete), "NSFileProtectionComplete");
  EXPECT_EQ(text(NSFileProtectionCompleteUnlessOpen), "NSFileProtectionCompleteUnlessOpen");
  EXPECT_EQ(text(NSFileProtectionCompleteUntilFirstUserAuthentication),
            "NSFileProtectionCompleteUntilFirstUserAuthentication");
}

TEST_F(DataProtection, AnItemWithoutAClassOfItsOwnAnswersTheDevicesDefault) {
  make(@"plain");
  EXPECT_EQ(stored(@"plain"), std::nullopt);
  EXPECT_EQ(answered(@"plain"), "NSFileProtectionNone");
}

TEST_F(DataProtection, EachClassThatIsSetIsStoredAndAnswered) {
  make(@"file");
  for (const char *name : {"NSFileProtectionComplete", "NSFileProtectionCompleteUnlessOpen",
                           "NSFileProtectionCompleteUntilFirstUserAuthentication", "NSFileProtectionNone"}) {
    NSError *error = nil;
    EXPECT_TRUE(set(@"file", [NSString stringWithUTF8String:name], &error)) << text([error localizedDescription]);
    EXPECT_EQ(stored(@"file"), name);
    EXPECT_EQ(answered(@"file"), name);
  }
}

TEST_F(DataProtection, TheAnsweredClassIsTheConstantItself) {
  make(@"file");
  store(@"file", "NSFileProtectionComplete");
  EXPECT_EQ([[manager() attributesOfItemAtPath:path(@"file") error:NULL] objectForKey:NSFileProtectionKey],
            NSFileProtectionComplete);
}

TEST_F(DataProtection, AFolderHasAClassToo) {
  ASSERT_TRUE([manager() createDirectoryAtPath:path(@"folder") withIntermediateDirectories:NO attributes:nil
                                         error:NULL]);
  EXPECT_TRUE(set(@"folder", NSFileProtectionComplete));
  EXPECT_EQ(stored(@"folder"), "NSFileProtectionComplete");
}

TEST_F(DataProtection, TheClassMovesWithARenamedItem) {
  make(@"before");
  ASSERT_TRUE(set(@"before", NSFileProtectionComplete));
  ASSERT_EQ(rename([path(@"before") UTF8String], [path(@"after") UTF8String]), 0);
  EXPECT_EQ(answered(@"after"), "NSFileProtectionComplete");
}

TEST_F(DataProtection, AnUnknownClassIsRefusedAndTheOldOneStays) {
  make(@"file");
  store(@"file", "NSFileProtectionComplete");
  NSError *error = nil;
  EXPECT_FALSE(set(@"file", @"NSFileProtectionPerhaps", &error));
  expectError(error, NSFileWriteUnknownError, path(@"file"), EINVAL);
  EXPECT_EQ(stored(@"file"), "NSFileProtectionComplete");
}

TEST_F(DataProtection, AClassThatIsNotAStringIsRefused) {
  make(@"file");
  NSError *error = nil;
  EXPECT_FALSE(set(@"file", @42, &error));
  expectError(error, NSFileWriteUnknownError, path(@"file"), EINVAL);
  EXPECT_EQ(stored(@"file"), std::nullopt);
}

TEST_F(DataProtection, AnAttributeThatHoldsNoClassCountsAsNone) {
  make(@"file");
  store(@"file", "rubbish");
  EXPECT_EQ(answered(@"file"), "NSFileProtectionNone");
  EXPECT_TRUE(set(@"file", NSFileProtectionComplete));
  EXPECT_EQ(stored(@"file"), "NSFileProtectionComplete");
}

TEST_F(DataProtection, ALinkStandsForTheItemThatItLeadsTo) {
  make(@"target");
  chmod([path(@"target") UTF8String], 0600);
  ASSERT_EQ(symlink("target", [path(@"link") UTF8String]), 0);
  NSMutableDictionary *const attributes = [[[manager() attributesOfItemAtPath:path(@"link")
                                                                        error:NULL] mutableCopy] autorelease];
  EXPECT_EQ(text([attributes fileType]), "NSFileTypeSymbolicLink");
  [attributes setObject:NSFileProtectionComplete forKey:NSFileProtectionKey];
  EXPECT_TRUE([manager() setAttributes:attributes ofItemAtPath:path(@"link") error:NULL]);
  EXPECT_EQ(stored(@"target"), "NSFileProtectionComplete");
  EXPECT_EQ(status(@"target").st_mode & 07777, 0600u) << "a link's permissions are not its target's";
}

TEST_F(DataProtection, ALinkThatLeadsNowhereCannotBeProtected) {
  ASSERT_EQ(symlink("nowhere", [path(@"link") UTF8String]), 0);
  NSError *error = nil;
  EXPECT_FALSE(set(@"link", NSFileProtectionComplete, &error));
  expectError(error, NSFileNoSuchFileError, path(@"link"), ENOENT);
}

// Named pipes carry no user attributes on Linux.
TEST_F(DataProtection, AnItemThatCannotCarryAClassAnswersAnError) {
  ASSERT_EQ(mkfifo([path(@"pipe") UTF8String], 0600), 0);
  NSError *error = nil;
  EXPECT_FALSE(set(@"pipe", NSFileProtectionComplete, &error));
  expectError(error, NSFileWriteNoPermissionError, path(@"pipe"), EPERM);
}

TEST_F(DataProtection, AnItemOutsideTheContainerIsNotTouched) {
  NSError *error = nil;
  NSString *const outside = @"/dev/null";
  EXPECT_FALSE([manager() setAttributes:@{NSFilePosixPermissions : @0666} ofItemAtPath:outside error:&error]);
  expectError(error, NSFileWriteNoPermissionError, outside, EPERM);
}

TEST_F(DataProtection, ALinkOutOfTheContainerDoesNotLetAttributesOut) {
  ASSERT_EQ(symlink("/dev", [path(@"out") UTF8String]), 0);
  ASSERT_EQ(symlink("/dev/null", [path(@"device") UTF8String]), 0);
  for (NSString *name in @[ @"device", @"out/null" ]) {
    NSError *error = nil;
    EXPECT_FALSE(set(name, NSFileProtectionComplete, &error));
    expectError(error, NSFileWriteNoPermissionError, path(name), EPERM);
  }
}

TEST_F(DataProtection, ADataWriteWithAProtectionOptionStoresThatClass) {
  const struct {
    NSUInteger option;
    const char *name;
  } cases[] = {{0x10000000, "NSFileProtectionNone"},
               {0x20000000, "NSFileProtectionComplete"},
               {0x30000000, "NSFileProtectionCompleteUnlessOpen"},
               {0x40000000, "NSFileProtectionCompleteUntilFirstUserAuthentication"}};
  for (const auto &each : cases)
    for (const NSUInteger atomic : {0u, 1u}) {
      NSString *const name = [NSString stringWithFormat:@"%lx-%lu", (unsigned long)each.option, (unsigned long)atomic];
      NSError *error = nil;
      EXPECT_TRUE([dataOf("new") writeToFile:path(name) options:each.option | atomic error:&error]);
      EXPECT_EQ(stored(name), each.name);
      EXPECT_EQ(contents(name), "new");
      NSString *const byURL = [name stringByAppendingString:@"-url"];
      EXPECT_TRUE([dataOf("new") writeToURL:url(byURL) options:each.option | atomic error:&error]);
      EXPECT_EQ(stored(byURL), each.name);
    }
}

TEST_F(DataProtection, TheOptionsHaveThePlatformsValues) {
  EXPECT_EQ(NSDataWritingFileProtectionNone, 0x10000000u);
  EXPECT_EQ(NSDataWritingFileProtectionComplete, 0x20000000u);
  EXPECT_EQ(NSDataWritingFileProtectionCompleteUnlessOpen, 0x30000000u);
  EXPECT_EQ(NSDataWritingFileProtectionCompleteUntilFirstUserAuthentication, 0x40000000u);
  EXPECT_EQ(NSDataWritingFileProtectionMask, 0xf0000000u);
}

TEST_F(DataProtection, ADataWriteWithoutAnOptionStoresNoClass) {
  EXPECT_TRUE([dataOf("new") writeToFile:path(@"file") options:NSDataWritingAtomic error:NULL]);
  EXPECT_EQ(stored(@"file"), std::nullopt);
}

TEST_F(DataProtection, AWriteInPlaceKeepsTheClassAndAnAtomicOneMakesANewItemWithout) {
  make(@"file");
  store(@"file", "NSFileProtectionComplete");
  EXPECT_TRUE([dataOf("new") writeToFile:path(@"file") atomically:NO]);
  EXPECT_EQ(stored(@"file"), "NSFileProtectionComplete");
  EXPECT_TRUE([dataOf("new") writeToFile:path(@"file") atomically:YES]);
  EXPECT_EQ(stored(@"file"), std::nullopt);
}

TEST_F(DataProtection, AFailedWriteLeavesTheClassOfTheItemAlone) {
  ASSERT_EQ(mkdir([path(@"folder") UTF8String], 0755), 0);
  store(@"folder", "NSFileProtectionComplete");
  for (const NSUInteger atomic : {0u, 1u})
    EXPECT_FALSE([dataOf("new") writeToFile:path(@"folder") options:0x10000000 | atomic error:NULL]);
  EXPECT_EQ(stored(@"folder"), "NSFileProtectionComplete");
}

TEST_F(DataProtection, NewFilesAndFoldersTakeTheClassFromTheirAttributes) {
  NSDictionary *const attributes = @{NSFileProtectionKey : NSFileProtectionComplete, NSFilePosixPermissions : @0640};
  EXPECT_TRUE([manager() createFileAtPath:path(@"file") contents:dataOf("x") attributes:attributes]);
  EXPECT_EQ(stored(@"file"), "NSFileProtectionComplete");
  EXPECT_EQ(status(@"file").st_mode & 07777, 0640u);
  EXPECT_TRUE([manager() createDirectoryAtPath:path(@"folder") withIntermediateDirectories:NO attributes:attributes
                                         error:NULL]);
  EXPECT_EQ(stored(@"folder"), "NSFileProtectionComplete");
  EXPECT_TRUE([manager() createDirectoryAtURL:url(@"other") withIntermediateDirectories:YES attributes:attributes
                                        error:NULL]);
  EXPECT_EQ(stored(@"other"), "NSFileProtectionComplete");
}

TEST_F(DataProtection, AFileWithAnUnknownClassInItsAttributesIsNotMade) {
  EXPECT_FALSE([manager() createFileAtPath:path(@"file") contents:dataOf("x")
                                attributes:@{NSFileProtectionKey : @"NSFileProtectionPerhaps"}]);
  EXPECT_EQ([names() count], 0u);
}

} // namespace
