#include "Protection.h"

using Collections = Protection;

TEST_F(Collections, ADictionaryWrittenIsProtectedBothWays) {
  NSDictionary *dictionary = @{@"key" : @"value"};
  EXPECT_TRUE([dictionary writeToFile:path(@"a") atomically:YES]);
  EXPECT_TRUE([dictionary writeToURL:url(@"b") atomically:NO]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(classOf(@"b"), kRaised);
  EXPECT_TRUE([[NSDictionary dictionaryWithContentsOfFile:path(@"a")] isEqual:dictionary]);
}

TEST_F(Collections, AMutableDictionaryIsADictionaryToo) {
  NSMutableDictionary *dictionary = [NSMutableDictionary dictionaryWithObject:@"value" forKey:@"key"];
  EXPECT_TRUE([dictionary writeToFile:path(@"a") atomically:NO]);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(Collections, AnArrayWrittenIsProtectedBothWays) {
  NSArray *array = @[ @"one", @"two" ];
  EXPECT_TRUE([array writeToFile:path(@"a") atomically:YES]);
  EXPECT_TRUE([array writeToURL:url(@"b") atomically:YES]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(classOf(@"b"), kRaised);
}

TEST_F(Collections, AStringWrittenIsProtectedBothWays) {
  EXPECT_TRUE([@"text" writeToFile:path(@"a") atomically:YES encoding:NSUTF8StringEncoding error:NULL]);
  EXPECT_TRUE([@"text" writeToURL:url(@"b") atomically:NO encoding:NSUTF16StringEncoding error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(classOf(@"b"), kRaised);
}

TEST_F(Collections, AnArchiveWrittenIsProtected) {
  EXPECT_TRUE([NSKeyedArchiver archiveRootObject:@[ @"x" ] toFile:path(@"a")]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_TRUE([[NSKeyedUnarchiver unarchiveObjectWithFile:path(@"a")] isEqual:@[ @"x" ]]);
}

TEST_F(Collections, WritesThatFailReturnNoKeepTheirErrorAndLogNothing) {
  NSError *error = nil;
  EXPECT_FALSE([@{@"k" : @"v"} writeToFile:impossible() atomically:YES]);
  EXPECT_FALSE([@{@"k" : @"v"} writeToURL:impossibleURL() atomically:YES]);
  EXPECT_FALSE([@[ @"v" ] writeToFile:impossible() atomically:NO]);
  EXPECT_FALSE([@[ @"v" ] writeToURL:impossibleURL() atomically:NO]);
  EXPECT_FALSE([@"v" writeToFile:impossible() atomically:YES encoding:NSUTF8StringEncoding error:&error]);
  EXPECT_NE(error, nil);
  error = nil;
  EXPECT_FALSE([@"v" writeToURL:impossibleURL() atomically:YES encoding:NSUTF8StringEncoding error:&error]);
  EXPECT_NE(error, nil);
  EXPECT_FALSE([NSKeyedArchiver archiveRootObject:@"v" toFile:impossible()]);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Collections, WritesThatFailLeaveTheProtectionOfWhatStandsThere) {
  EXPECT_FALSE([@{@"k" : @"v"} writeToFile:occupied() atomically:NO]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([@{@"k" : @"v"} writeToURL:occupiedURL() atomically:NO]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([@[ @"v" ] writeToFile:occupied() atomically:NO]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([@[ @"v" ] writeToURL:occupiedURL() atomically:NO]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([@"v" writeToFile:occupied() atomically:NO encoding:NSUTF8StringEncoding error:NULL]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([@"v" writeToURL:occupiedURL() atomically:NO encoding:NSUTF8StringEncoding error:NULL]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_FALSE([NSKeyedArchiver archiveRootObject:@"v" toFile:occupied()]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Collections, ADictionaryThatIsNoPropertyListFailsAsItDidBefore) {
  NSObject *opaque = [[[NSObject alloc] init] autorelease];
  EXPECT_FALSE([@{@"k" : opaque} writeToFile:path(@"a") atomically:YES]);
  EXPECT_FALSE(support::exists(path(@"a")));
}

TEST_F(Collections, AStoredClassOtherThanNoneIsLeftAlone) {
  ASSERT_TRUE([@"text" writeToFile:path(@"a") atomically:NO encoding:NSUTF8StringEncoding error:NULL]);
  support::storeClass(path(@"a"), kComplete);
  EXPECT_TRUE([@"more" writeToFile:path(@"a") atomically:NO encoding:NSUTF8StringEncoding error:NULL]);
  EXPECT_EQ(classOf(@"a"), kComplete);
}

using FileWrapper = Protection;

TEST_F(FileWrapper, OfAFileWrittenIsProtected) {
  NSFileWrapper *wrapper = [[[NSFileWrapper alloc] initRegularFileWithContents:bytes()] autorelease];
  EXPECT_TRUE([wrapper writeToURL:url(@"a") options:0 originalContentsURL:nil error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(FileWrapper, OfAFolderProtectsItsTopItem) {
  NSFileWrapper *file = [[[NSFileWrapper alloc] initRegularFileWithContents:bytes()] autorelease];
  NSFileWrapper *folderWrapper = [[[NSFileWrapper alloc] initDirectoryWithFileWrappers:@{@"inner" : file}] autorelease];
  EXPECT_TRUE([folderWrapper writeToURL:url(@"a") options:0 originalContentsURL:nil error:NULL]);
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_TRUE(support::exists(path(@"a/inner")));
}

TEST_F(FileWrapper, ThatCannotBeWrittenReturnsNoAndLogsNothing) {
  NSFileWrapper *wrapper = [[[NSFileWrapper alloc] initRegularFileWithContents:bytes()] autorelease];
  EXPECT_FALSE([wrapper writeToURL:impossibleURL() options:0 originalContentsURL:nil error:NULL]);
  EXPECT_FALSE([wrapper writeToURL:occupiedURL() options:0 originalContentsURL:nil error:NULL]);
  EXPECT_EQ(classOfOccupied(), kNone);
  EXPECT_TRUE(support::log().empty());
}
