// -[NSFileManager forceFileProtectionForItemAtPath:], and what the hooks do when protecting fails.
#include "Protection.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

@interface NSFileManager (Helpers)
- (void)forceFileProtectionForItemAtPath:(NSString *)path;
- (BOOL)sb_setAttributes:(NSDictionary *)attributes ofItemAtPath:(NSString *)path error:(NSError **)error;
@end

// A file manager whose steps can be watched and made to fail.
@interface QVScriptedManager : NSFileManager {
@public
  NSMutableArray *calls;
  id attributesGiven;
  BOOL attributesUnreadable, classUnknown, classIsAnEqualString, settingFails, itemVanishes;
}
@end

@implementation QVScriptedManager
- (id)init {
  if ((self = [super init])) calls = [[NSMutableArray alloc] init];
  return self;
}
- (void)dealloc {
  [calls release];
  [attributesGiven release];
  [super dealloc];
}
- (BOOL)fileExistsAtPath:(NSString *)path {
  [calls addObject:@"exists"];
  const BOOL exists = [super fileExistsAtPath:path];
  if (itemVanishes) unlink([path fileSystemRepresentation]);
  return exists;
}
- (NSDictionary *)attributesOfItemAtPath:(NSString *)path error:(NSError **)error {
  [calls addObject:error ? @"attributes with error slot" : @"attributes"];
  if (attributesUnreadable) return nil;
  NSMutableDictionary *const attributes = [[[super attributesOfItemAtPath:path error:error] mutableCopy] autorelease];
  if (classUnknown) [attributes removeObjectForKey:@"NSFileProtectionKey"];
  if (classIsAnEqualString)
    [attributes setObject:[NSMutableString stringWithFormat:@"NSFileProtection%@", @"None"]
                   forKey:@"NSFileProtectionKey"];
  return attributes;
}
- (BOOL)sb_setAttributes:(NSDictionary *)attributes ofItemAtPath:(NSString *)path error:(NSError **)error {
  [calls addObject:(error && !*error) ? @"set" : @"set without an empty error slot"];
  [attributesGiven release];
  attributesGiven = [attributes copy];
  if (settingFails) {
    *error = [NSError errorWithDomain:@"QVTest" code:5 userInfo:@{NSLocalizedDescriptionKey : @"will not"}];
    return NO;
  }
  return [super sb_setAttributes:attributes ofItemAtPath:path error:error];
}
@end

namespace {

/// What the one line of a failure begins with; the platform's error follows.
std::string failureAt(NSString *path) {
  return "0 -[NSFileManager(Helpers) forceFileProtectionForItemAtPath:]: Failed to set file protection attributes for "
         "file at " +
         support::text(path) + ". Error: ";
}

class Helper : public Protection {
protected:
  void SetUp() override {
    Protection::SetUp();
    scripted = [[QVScriptedManager alloc] init];
    ASSERT_TRUE([bytes() writeToFile:path(@"a") atomically:NO]);
    support::storeClass(path(@"a"), kNone);
    support::clearLog();
  }
  void TearDown() override {
    [scripted release];
    Protection::TearDown();
  }
  std::string calls() { return support::text([scripted->calls componentsJoinedByString:@", "]); }
  /// The helper's steps on this manager since the last time, past what the platform asked itself before.
  std::string askedSince() {
    const std::string all = calls();
    [scripted->calls removeAllObjects];
    const std::string steps = "exists, attributes, set";
    return all.size() > steps.size() ? all.substr(all.size() - steps.size()) : all;
  }
  void expectOneFailureAt(NSString *item) {
    const std::vector<std::string> lines = support::log();
    ASSERT_EQ(lines.size(), 1u);
    const std::string start = failureAt(item);
    EXPECT_EQ(lines[0].substr(0, start.size()), start);
    EXPECT_GT(lines[0].size(), start.size());
    EXPECT_EQ(lines[0].find("(null)"), std::string::npos) << lines[0];
  }
  QVScriptedManager *scripted;
};

} // namespace

TEST_F(Helper, RaisesAnItemOfClassNone) {
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(calls(), "exists, attributes, set");
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Helper, RaisesAnItemWhoseAttributesHoldNoClass) {
  scripted->classUnknown = YES;
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  EXPECT_EQ(classOf(@"a"), kRaised);
  EXPECT_EQ(support::text([scripted->attributesGiven objectForKey:@"NSFileProtectionKey"]), kRaised);
}

TEST_F(Helper, RecognisesTheClassNoneByItsTextNotByItsAddress) {
  scripted->classIsAnEqualString = YES;
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  EXPECT_EQ(classOf(@"a"), kRaised);
}

TEST_F(Helper, LeavesEveryOtherClassAndSetsNoAttributes) {
  for (const char *other : {kComplete, kUnlessOpen, kRaised}) {
    support::storeClass(path(@"a"), other);
    [scripted->calls removeAllObjects];
    [scripted forceFileProtectionForItemAtPath:path(@"a")];
    EXPECT_EQ(classOf(@"a"), other);
    EXPECT_EQ(calls(), "exists, attributes");
  }
}

TEST_F(Helper, ReadsAndSetsNothingWhenThereIsNoItem) {
  [scripted forceFileProtectionForItemAtPath:path(@"none")];
  EXPECT_EQ(calls(), "exists");
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Helper, OfANilPathDoesNothing) {
  [scripted forceFileProtectionForItemAtPath:nil];
  EXPECT_EQ(calls(), "exists");
  EXPECT_TRUE(support::log().empty());
}

TEST_F(Helper, HandsBackAllAttributesThatItReadNotOnlyTheClass) {
  NSDictionary *before = [[NSFileManager defaultManager] attributesOfItemAtPath:path(@"a") error:NULL];
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  NSMutableDictionary *expected = [[before mutableCopy] autorelease];
  [expected setObject:@"NSFileProtectionCompleteUntilFirstUserAuthentication" forKey:@"NSFileProtectionKey"];
  EXPECT_TRUE([scripted->attributesGiven isEqual:expected]) << [[scripted->attributesGiven description] UTF8String];
}

TEST_F(Helper, ThatCannotSetTheClassLogsOneLineOfLevelZero) {
  scripted->settingFails = YES;
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  EXPECT_EQ(classOf(@"a"), kNone);
  const std::vector<std::string> lines = support::log();
  ASSERT_EQ(lines.size(), 1u);
  NSError *error = [NSError errorWithDomain:@"QVTest" code:5 userInfo:@{NSLocalizedDescriptionKey : @"will not"}];
  EXPECT_EQ(lines[0], "0 -[NSFileManager(Helpers) forceFileProtectionForItemAtPath:]: Failed to set file protection "
                      "attributes for file at " +
                          support::text(path(@"a")) + ". Error: " + support::text([error description]));
}

TEST_F(Helper, ThatCannotReadTheAttributesHandsThePlatformNoneAndLogsItsRefusal) {
  scripted->attributesUnreadable = YES;
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  EXPECT_EQ(calls(), "exists, attributes, set");
  EXPECT_EQ(scripted->attributesGiven, nil);
  expectOneFailureAt(path(@"a"));
  EXPECT_EQ(classOf(@"a"), kNone);
}

TEST_F(Helper, OfAnItemThatVanishesAfterItWasSeenLogsOneLine) {
  scripted->itemVanishes = YES;
  [scripted forceFileProtectionForItemAtPath:path(@"a")];
  EXPECT_EQ(calls(), "exists, attributes, set");
  expectOneFailureAt(path(@"a"));
}

TEST_F(Helper, OfAFileManagerIsCalledOnTheOneThatTheHostAsked) {
  EXPECT_TRUE([scripted createFileAtPath:path(@"b") contents:bytes() attributes:nil]);
  EXPECT_EQ(classOf(@"b"), kRaised);
  EXPECT_EQ(askedSince(), "exists, attributes, set");
  EXPECT_TRUE([scripted createDirectoryAtPath:path(@"c") withIntermediateDirectories:NO attributes:nil error:NULL]);
  EXPECT_EQ(askedSince(), "exists, attributes, set");
  EXPECT_TRUE([scripted createDirectoryAtURL:url(@"d") withIntermediateDirectories:NO attributes:nil error:NULL]);
  EXPECT_EQ(askedSince(), "exists, attributes, set");
  EXPECT_TRUE([scripted setAttributes:@{NSFileProtectionKey : NSFileProtectionNone} ofItemAtPath:path(@"b")
                                error:NULL]);
  EXPECT_EQ(askedSince(), "exists, attributes, set");
}

TEST_F(Helper, AWriteWhoseProtectionCannotBeSetStillSucceedsWithOneLine) {
  // A pipe takes bytes but no extended attributes, not even from root, who may change a read-only file.
  const char *pipe = [path(@"pipe") fileSystemRepresentation];
  ASSERT_EQ(mkfifo(pipe, 0600), 0);
  const int reader = open(pipe, O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_TRUE([bytes() writeToFile:path(@"pipe") atomically:NO]);
  char got[32] = {};
  EXPECT_EQ(read(reader, got, sizeof got), 10);
  EXPECT_STREQ(got, "some bytes");
  close(reader);
  expectOneFailureAt(path(@"pipe"));
}
