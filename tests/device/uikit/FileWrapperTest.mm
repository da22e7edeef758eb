#import "Files.h"

#include <cerrno>
#include <unistd.h>

namespace {

class FileWrapper : public Files {
protected:
  static NSFileWrapper *file(const std::string &bytes) {
    return [[[NSFileWrapper alloc] initRegularFileWithContents:dataOf(bytes)] autorelease];
  }
  static NSFileWrapper *folder(NSDictionary *children) {
    return [[[NSFileWrapper alloc] initDirectoryWithFileWrappers:children] autorelease];
  }
  BOOL write(NSFileWrapper *wrapper, NSString *name, NSUInteger options, NSError **error = NULL) {
    return [wrapper writeToURL:url(name) options:options originalContentsURL:nil error:error];
  }
};

TEST_F(FileWrapper, AFileIsWrittenAndReplaced) {
  for (const NSUInteger options : {0u, 1u}) {
    EXPECT_TRUE(write(file("one"), @"file", options));
    EXPECT_EQ(contents(@"file"), "one");
    EXPECT_TRUE(write(file("two"), @"file", options));
    EXPECT_EQ(contents(@"file"), "two");
  }
}

TEST_F(FileWrapper, AFolderIsWrittenWithAllThatItHolds) {
  EXPECT_TRUE(write(folder(@{@"a" : file("1"), @"sub" : folder(@{@"b" : file("2")})}), @"package", 1));
  EXPECT_EQ(contents(@"package/a"), "1");
  EXPECT_EQ(contents(@"package/sub/b"), "2");
  EXPECT_EQ([names() count], 1u);
}

TEST_F(FileWrapper, AFolderThatIsWrittenAgainHoldsOnlyWhatItHoldsNow) {
  ASSERT_TRUE(write(folder(@{@"old" : file("1")}), @"package", 1));
  EXPECT_TRUE(write(folder(@{@"new" : file("2")}), @"package", 1));
  EXPECT_EQ(contents(@"package/new"), "2");
  EXPECT_EQ(contents(@"package/old"), "(missing)");
  EXPECT_EQ([names() count], 1u);
}

TEST_F(FileWrapper, AFolderTakesThePlaceOfAFile) {
  make(@"package");
  EXPECT_TRUE(write(folder(@{@"a" : file("1")}), @"package", 0));
  EXPECT_EQ(contents(@"package/a"), "1");
}

TEST_F(FileWrapper, ALinkIsWrittenAndReplaced) {
  NSFileWrapper *const link = [[[NSFileWrapper alloc] initSymbolicLinkWithDestination:@"elsewhere"] autorelease];
  EXPECT_TRUE(write(link, @"link", 0));
  EXPECT_TRUE(write(link, @"link", 0));
  char destination[64] = {};
  EXPECT_GT(readlink([path(@"link") UTF8String], destination, sizeof destination - 1), 0);
  EXPECT_STREQ(destination, "elsewhere");
}

TEST_F(FileWrapper, AMissingFolderIsAnErrorAndLeavesNoLitter) {
  for (NSFileWrapper *each in @[ file("x"), folder(@{@"a" : file("1")}) ]) {
    NSError *error = nil;
    EXPECT_FALSE(write(each, @"no/item", 1, &error));
    expectError(error, NSFileNoSuchFileError, path(@"no/item"), ENOENT);
    EXPECT_FALSE(write(each, @"no/item", 0, NULL));
  }
  EXPECT_EQ([names() count], 0u);
}

TEST_F(FileWrapper, AWebAddressIsAnErrorAndNoFileIsMade) {
  NSError *error = nil;
  EXPECT_FALSE([file("x") writeToURL:[NSURL URLWithString:@"http://example.com/qvdevice-test"] options:0
                 originalContentsURL:nil
                               error:&error]);
  EXPECT_EQ([error code], NSFileWriteUnsupportedSchemeError);
}

TEST_F(FileWrapper, TheNameIsUpdatedOnlyWhenAsked) {
  NSFileWrapper *const wrapper = file("x");
  EXPECT_TRUE(write(wrapper, @"first", 0));
  EXPECT_EQ([wrapper filename], nil);
  EXPECT_TRUE(write(wrapper, @"second", NSFileWrapperWritingWithNameUpdating));
  EXPECT_EQ(text([wrapper filename]), "second");
}

TEST_F(FileWrapper, WhatWasWrittenIsReadAgain) {
  ASSERT_TRUE(write(folder(@{@"a" : file("1")}), @"package", 1));
  NSError *error = nil;
  NSFileWrapper *const read = [[[NSFileWrapper alloc] initWithURL:url(@"package") options:0 error:&error] autorelease];
  NSFileWrapper *const leaf = [[read fileWrappers] objectForKey:@"a"];
  EXPECT_TRUE([[leaf regularFileContents] isEqual:dataOf("1")]);
}

TEST_F(FileWrapper, WhatIsMissingIsNotRead) {
  NSError *error = nil;
  EXPECT_EQ([[NSFileWrapper alloc] initWithURL:url(@"missing") options:0 error:&error], nil);
  expectError(error, NSFileReadNoSuchFileError, path(@"missing"), ENOENT);
}

TEST_F(FileWrapper, NoClassIsStoredOnAnythingThatIsWritten) {
  ASSERT_TRUE(write(folder(@{@"a" : file("1")}), @"package", 1));
  EXPECT_EQ(stored(@"package"), std::nullopt);
  EXPECT_EQ(stored(@"package/a"), std::nullopt);
}

} // namespace
