#import "Files.h"

#include <cerrno>
#include <functional>
#include <unistd.h>

namespace {

class FileWriting : public Files {};

struct Writer {
  const char *name;
  std::function<BOOL(NSString *path, NSError **error)> write;
  const char *written;
  bool reports; // whether the method has an error slot
};

NSString *const words = @"wörter";

// Every Foundation method that writes a file.
std::vector<Writer> writers() {
  auto at = [](NSString *path) { return path ? [NSURL fileURLWithPath:path] : nil; };
  std::vector<Writer> all;
  for (const BOOL atomic : {NO, YES}) {
    all.insert(
        all.end(),
        {
            {"data to file", [=](NSString *p, NSError **) { return [dataOf("d") writeToFile:p atomically:atomic]; },
             "d", false},
            {"data to URL", [=](NSString *p, NSError **) { return [dataOf("d") writeToURL:at(p) atomically:atomic]; },
             "d", false},
            {"data to file with options",
             [=](NSString *p, NSError **e) { return [dataOf("d") writeToFile:p options:atomic error:e]; }, "d", true},
            {"data to URL with options",
             [=](NSString *p, NSError **e) { return [dataOf("d") writeToURL:at(p) options:atomic error:e]; }, "d",
             true},
            {"string to file",
             [=](NSString *p, NSError **e) {
               return [words writeToFile:p atomically:atomic encoding:NSUTF8StringEncoding error:e];
             }, "wörter", true},
            {"string to URL",
             [=](NSString *p, NSError **e) {
               return [words writeToURL:at(p) atomically:atomic encoding:NSUTF8StringEncoding error:e];
             }, "wörter", true},
            {"array to file", [=](NSString *p, NSError **) { return [@[ @"plist" ] writeToFile:p atomically:atomic]; },
             nullptr, false},
            {"array to URL",
             [=](NSString *p, NSError **) { return [@[ @"plist" ] writeToURL:at(p) atomically:atomic]; }, nullptr,
             false},
            {"dictionary to file",
             [=](NSString *p, NSError **) {
               return [@{@"plist" : @1} writeToFile:p atomically:atomic];
             }, nullptr, false},
            {"dictionary to URL",
             [=](NSString *p, NSError **) {
               return [@{@"plist" : @1} writeToURL:at(p) atomically:atomic];
             }, nullptr, false},
        });
  }
  all.push_back({"archive", [](NSString *p, NSError **) {
                   return [NSKeyedArchiver archiveRootObject:@[ @"plist" ] toFile:p];
                 }, nullptr, false});
  return all;
}

TEST_F(FileWriting, EveryMethodWritesANewFileAndReplacesAnOldOne) {
  for (const Writer &writer : writers()) {
    for (const bool exists : {false, true}) {
      if (exists) make(@"file", "something longer that stood there before");
      NSError *error = nil;
      EXPECT_TRUE(writer.write(path(@"file"), &error)) << writer.name;
      EXPECT_EQ(error, nil) << writer.name;
      if (writer.written)
        EXPECT_EQ(contents(@"file"), writer.written) << writer.name;
      else
        EXPECT_NE(contents(@"file").find("plist"), std::string::npos) << writer.name;
      EXPECT_EQ([names() count], 1u) << writer.name;
    }
    unlink([path(@"file") UTF8String]);
  }
}

TEST_F(FileWriting, EveryMethodFailsIntoAMissingFolderWithAnErrorAndWithoutLitterOrOutput) {
  EXPECT_EQ(standardErrorOf([&] {
              for (const Writer &writer : writers()) {
                NSError *error = nil;
                EXPECT_FALSE(writer.write(path(@"no/file"), &error)) << writer.name;
                if (writer.reports) expectError(error, NSFileNoSuchFileError, path(@"no/file"), ENOENT);
                EXPECT_FALSE(writer.write(path(@"no/file"), NULL)) << writer.name;
                EXPECT_EQ([names() count], 0u) << writer.name;
              }
            }), "");
}

TEST_F(FileWriting, EveryMethodFailsOverAFolderWithoutLitterOrOutput) {
  mkdir([path(@"folder") UTF8String], 0755);
  EXPECT_EQ(standardErrorOf([&] {
              for (const Writer &writer : writers()) {
                NSError *error = nil;
                EXPECT_FALSE(writer.write(path(@"folder"), &error)) << writer.name;
                if (writer.reports) expectError(error, NSFileWriteUnknownError, path(@"folder"), EISDIR);
                EXPECT_EQ([names() count], 1u) << writer.name;
              }
            }), "");
}

TEST_F(FileWriting, EveryMethodFailsOutsideTheContainer) {
  for (const Writer &writer : writers()) {
    NSError *error = nil;
    EXPECT_FALSE(writer.write(@"/usr/qvdevice-test", &error)) << writer.name;
    if (writer.reports) expectError(error, NSFileWriteNoPermissionError, @"/usr/qvdevice-test", EACCES);
  }
  EXPECT_NE(access("/usr/qvdevice-test", F_OK), 0);
}

TEST_F(FileWriting, EveryMethodFailsWithoutAPath) {
  for (const Writer &writer : writers()) {
    NSError *error = nil;
    EXPECT_FALSE(writer.write(nil, &error)) << writer.name;
    if (writer.reports) EXPECT_NE(error, nil) << writer.name;
    EXPECT_FALSE(writer.write(nil, NULL)) << writer.name;
  }
}

TEST_F(FileWriting, APathThatIsTooLongOrHoldsANulNamesNoFile) {
  NSString *const longPath = path([@"" stringByPaddingToLength:5000 withString:@"x" startingAtIndex:0]);
  const unichar nul = 0;
  NSString *const withNul = path([@"file" stringByAppendingString:[NSString stringWithCharacters:&nul length:1]]);
  for (NSString *bad in @[ longPath, withNul, path([@"ä" stringByAppendingString:withNul]) ]) {
    NSError *error = nil;
    EXPECT_FALSE([dataOf("x") writeToFile:bad options:0 error:&error]);
    EXPECT_EQ([error code], NSFileWriteInvalidFileNameError);
  }
  EXPECT_EQ([names() count], 0u);
}

TEST_F(FileWriting, AWebAddressIsNoPlaceForAFile) {
  NSURL *const web = [NSURL URLWithString:@"http://127.0.0.1:1/file"];
  NSError *error = nil;
  EXPECT_FALSE([dataOf("x") writeToURL:web options:0 error:&error]);
  EXPECT_EQ([error code], NSFileWriteUnsupportedSchemeError);
  EXPECT_EQ([[error userInfo] objectForKey:NSURLErrorKey], web);
  EXPECT_FALSE([dataOf("x") writeToURL:web atomically:YES]);
  EXPECT_FALSE([@"x" writeToURL:web atomically:YES encoding:NSUTF8StringEncoding error:&error]);
  EXPECT_EQ([error code], NSFileWriteUnsupportedSchemeError);
  EXPECT_FALSE([@{} writeToURL:web atomically:YES]);
  EXPECT_FALSE([@[] writeToURL:web atomically:YES]);
}

TEST_F(FileWriting, AURLWithEscapesNamesThePlainFile) {
  NSString *const name = @"a b%c#ü.txt";
  EXPECT_TRUE([dataOf("x") writeToURL:url(name) options:NSDataWritingAtomic error:NULL]);
  EXPECT_EQ(contents(name), "x");
}

TEST_F(FileWriting, TextThatTheEncodingCannotHoldIsNotWritten) {
  NSError *error = nil;
  EXPECT_FALSE([@"€" writeToFile:path(@"file") atomically:YES encoding:NSASCIIStringEncoding error:&error]);
  EXPECT_EQ([error code], NSFileWriteInapplicableStringEncodingError);
  EXPECT_EQ(text([[error userInfo] objectForKey:@"NSFilePath"]), text(path(@"file")));
  EXPECT_EQ([[[error userInfo] objectForKey:@"NSStringEncodingErrorKey"] unsignedIntValue], NSASCIIStringEncoding);
  EXPECT_FALSE([@"€" writeToFile:path(@"file") atomically:YES encoding:NSASCIIStringEncoding error:NULL]);
  EXPECT_EQ([names() count], 0u);
}

TEST_F(FileWriting, ObjectsThatAPropertyListCannotHoldAreNotWritten) {
  EXPECT_FALSE([@{@"key" : [NSURL URLWithString:@"x:y"]} writeToFile:path(@"file") atomically:YES]);
  EXPECT_FALSE([@{@1 : @"key is a number"} writeToFile:path(@"file") atomically:YES]);
  EXPECT_FALSE([@[ @[ [NSNull null] ] ] writeToFile:path(@"file") atomically:YES]);
  EXPECT_EQ([names() count], 0u);
}

TEST_F(FileWriting, APropertyListReadsBackAsItWasWritten) {
  NSDictionary *const list = @{
    @"text" : @"ü<&>",
    @"number" : @(-7),
    @"real" : @0.5,
    @"data" : dataOf(std::string("\0\x01\xff", 3)),
    @"date" : [NSDate dateWithTimeIntervalSince1970:1000000000],
    @"list" : @[ @[], @{} ],
  };
  ASSERT_TRUE([list writeToFile:path(@"file") atomically:YES]);
  EXPECT_EQ(contents(@"file").substr(0, 5), "<?xml");
  EXPECT_TRUE([[NSDictionary dictionaryWithContentsOfFile:path(@"file")] isEqual:list]);
}

TEST_F(FileWriting, AnArchiveReadsBackAsItWasWritten) {
  NSArray *const object = @[ @"one", @2, [NSDate dateWithTimeIntervalSince1970:3] ];
  ASSERT_TRUE([NSKeyedArchiver archiveRootObject:object toFile:path(@"file")]);
  EXPECT_TRUE([[NSKeyedUnarchiver unarchiveObjectWithFile:path(@"file")] isEqual:object]);
}

TEST_F(FileWriting, AnAtomicWriteKeepsThePermissionsOfTheFileThatItReplaces) {
  make(@"file");
  chmod([path(@"file") UTF8String], 0604);
  const ino_t before = status(@"file").st_ino;
  EXPECT_TRUE([dataOf("new") writeToFile:path(@"file") atomically:YES]);
  EXPECT_EQ(status(@"file").st_mode & 07777, 0604u);
  EXPECT_NE(status(@"file").st_ino, before);
}

TEST_F(FileWriting, AWriteInPlaceGoesThroughALinkAndAnAtomicOneReplacesIt) {
  make(@"target");
  symlink("target", [path(@"link") UTF8String]);
  EXPECT_TRUE([dataOf("new") writeToFile:path(@"link") atomically:NO]);
  EXPECT_EQ(contents(@"target"), "new");
  EXPECT_TRUE([dataOf("newer") writeToFile:path(@"link") atomically:YES]);
  EXPECT_EQ(contents(@"target"), "new");
  EXPECT_TRUE(S_ISREG(status(@"link").st_mode));
}

TEST_F(FileWriting, AWriteWithoutOverwritingLeavesAnExistingFileAlone) {
  make(@"file");
  for (const NSUInteger atomic : {0u, 1u}) {
    NSError *error = nil;
    EXPECT_FALSE([dataOf("new") writeToFile:path(@"file") options:NSDataWritingWithoutOverwriting | atomic
                                      error:&error]);
    expectError(error, NSFileWriteFileExistsError, path(@"file"), EEXIST);
    EXPECT_EQ(contents(@"file"), "old");
  }
}

TEST_F(FileWriting, EmptyAndLargeContentsAreWrittenWhole) {
  const std::string large(5'000'000, 'x');
  for (const BOOL atomic : {NO, YES}) {
    EXPECT_TRUE([[NSData data] writeToFile:path(@"empty") atomically:atomic]);
    EXPECT_EQ(contents(@"empty"), "");
    EXPECT_TRUE([dataOf(large) writeToFile:path(@"large") atomically:atomic]);
    EXPECT_TRUE(contents(@"large") == large);
  }
}

TEST_F(FileWriting, ARelativePathIsTakenFromTheCurrentFolder) {
  NSString *const before = [manager() currentDirectoryPath];
  ASSERT_TRUE([manager() changeCurrentDirectoryPath:path(@"")]);
  EXPECT_TRUE([dataOf("x") writeToFile:@"file" atomically:YES]);
  EXPECT_TRUE([manager() setAttributes:@{NSFileProtectionKey : NSFileProtectionComplete} ofItemAtPath:@"file"
                                 error:NULL]);
  [manager() changeCurrentDirectoryPath:before];
  EXPECT_EQ(contents(@"file"), "x");
  EXPECT_EQ(stored(@"file"), "NSFileProtectionComplete");
}

} // namespace
