// A whitelist as a whole: what it may be, and how it is gone through.
#include "Policy.h"

/// A string of a class of its own, which notes its name when it is read.
@interface QVReadString : NSString {
  NSString *_text;
}
+ (instancetype)of:(NSString *)text;
@end

namespace {
std::vector<std::string> readStrings;
}

@implementation QVReadString

+ (instancetype)of:(NSString *)text {
  QVReadString *const made = [[[self alloc] init] autorelease];
  made->_text = [text copy];
  return made;
}

- (void)dealloc {
  [_text release];
  [super dealloc];
}

- (NSUInteger)length {
  if (readStrings.empty() || readStrings.back() != [_text UTF8String]) readStrings.push_back([_text UTF8String]);
  return [_text length];
}

- (unichar)characterAtIndex:(NSUInteger)index {
  return [_text characterAtIndex:index];
}

@end

namespace {

class Whitelist : public Policy {
protected:
  void SetUp() override {
    Policy::SetUp();
    sdk->openInPolicy = 2;
    readStrings.clear();
  }

  /// The SDK's whitelist from now on.
  void use(id whitelist) {
    [sdk->openInWhitelist release];
    sdk->openInWhitelist = [whitelist retain];
  }
  BOOL allows(NSString *appId) {
    const BOOL answer = [util allowsOpenInWithAppId:appId];
    EXPECT_EQ([util _whitelistApprovedAppId:appId], answer);
    return answer;
  }
};

} // namespace

TEST_F(Whitelist, ThatIsNilAllowsNothing) {
  use(nil);
  EXPECT_FALSE(allows(@"com.example"));
  EXPECT_FALSE(allows(@""));
  EXPECT_FALSE(allows(nil));
}

TEST_F(Whitelist, ThatIsEmptyAllowsNothing) {
  use(@[]);
  EXPECT_FALSE(allows(@"com.example"));
  EXPECT_FALSE(allows(@""));
  EXPECT_FALSE(allows(nil));
}

TEST_F(Whitelist, WithAnEmptyStringALoneDotBlanksAndAnAsteriskAllowsNothingElse) {
  use(@[ @"", @".", @"   ", @"*" ]);
  EXPECT_TRUE(allows(@""));
  EXPECT_TRUE(allows(@"."));
  EXPECT_TRUE(allows(@"   "));
  EXPECT_TRUE(allows(@"*"));
  EXPECT_FALSE(allows(@"com.example"));
  EXPECT_FALSE(allows(@" "));
  EXPECT_FALSE(allows(@".."));
  EXPECT_FALSE(allows(nil));
}

TEST_F(Whitelist, MayBeASet) {
  use([NSSet setWithObjects:@"com.example", @"mail", @"org.example", nil]);
  EXPECT_TRUE(allows(@"com.example.notes"));
  EXPECT_TRUE(allows(@"mail"));
  EXPECT_FALSE(allows(@"net.example"));
}

TEST_F(Whitelist, IsGoneThroughInItsOrderUpToTheFirstMatchAndNoFurther) {
  use(@[
    [QVReadString of:@"org.example"], [QVReadString of:@"com.example"], [QVReadString of:@"com.example.notes"],
    [QVReadString of:@"com"]
  ]);
  EXPECT_TRUE([util _whitelistApprovedAppId:@"com.example.notes"]);
  EXPECT_EQ(readStrings, (std::vector<std::string>{"org.example", "com.example"}));
  readStrings.clear();
  EXPECT_FALSE([util _whitelistApprovedAppId:@"net.example.notes"]);
  EXPECT_EQ(readStrings, (std::vector<std::string>{"org.example", "com.example", "com.example.notes", "com"}));
}

TEST_F(Whitelist, IsNotReadForNoIdentifier) {
  use(@[ [QVReadString of:@"org.example"] ]);
  EXPECT_FALSE(allows(nil));
  EXPECT_TRUE(readStrings.empty());
}

TEST_F(Whitelist, MatchesStringsOfEveryClassAgainstIdentifiersOfEveryClass) {
  use(@[
    @"com.constant", [NSMutableString stringWithString:@"com.mutable"], [NSString stringWithFormat:@"com.%@", @"made"],
    [QVReadString of:@"com.own"], [NSString stringWithUTF8String:"com.größe"], [NSString stringWithUTF8String:"com.ж"]
  ]);
  for (NSString *const appId in @[ @"com.constant", @"com.mutable", @"com.made", @"com.own", @"com.größe", @"com.ж" ]) {
    EXPECT_TRUE(allows([appId stringByAppendingString:@".mail"])) << [appId UTF8String];
    EXPECT_TRUE(allows([QVReadString of:appId])) << [appId UTF8String];
    EXPECT_TRUE(allows([NSMutableString stringWithString:appId])) << [appId UTF8String];
    EXPECT_TRUE(allows([NSString stringWithUTF8String:[appId UTF8String]])) << [appId UTF8String];
  }
  EXPECT_FALSE(allows(@"com.other"));
}

TEST_F(Whitelist, WithEntriesThatAreNoStringsIsMatchedByItsStrings) {
  use(@[ [NSNull null], @7, @[ @"org.example" ], @{}, [NSDate date], @"com.example", [NSNull null] ]);
  EXPECT_TRUE(allows(@"com.example"));
  EXPECT_FALSE(allows(@"org.example"));
  EXPECT_FALSE(allows(@"7"));
}

TEST_F(Whitelist, ThatIsNoCollectionAllowsNothing) {
  use(@"com.example");
  EXPECT_FALSE(allows(@"com.example"));
  use(@7);
  EXPECT_FALSE(allows(@"7"));
}

TEST_F(Whitelist, IsNotMatchedByAnIdentifierThatIsNoString) {
  use(@[ @"com.example", @"7" ]);
  EXPECT_FALSE(allows((NSString *)@7));
  EXPECT_FALSE(allows((NSString *)[NSNull null]));
}

TEST_F(Whitelist, OfThousandsOfPatternsIsMatchedToItsEnd) {
  NSMutableArray *const patterns = [NSMutableArray array];
  for (int i = 0; i < 20000; ++i)
    [patterns addObject:[NSString stringWithFormat:@"com.example.suite%05d", i]];
  use(patterns);
  EXPECT_TRUE(allows(@"com.example.suite00000"));
  EXPECT_TRUE(allows(@"com.example.suite19999.mail"));
  EXPECT_FALSE(allows(@"com.example.suite20000"));
  EXPECT_FALSE(allows(@"com.example.suite"));
}

TEST_F(Whitelist, IsNotReadAsLongAsTheSDKIsNotThereOrNotReady) {
  use(@[ @"com.example" ]);
  EXPECT_TRUE(allows(@"com.example"));
  sdk->ready = NO;
  EXPECT_FALSE(allows(@"com.example"));
  sdk->ready = YES;
  [util setZorbel:nil];
  EXPECT_FALSE(allows(@"com.example"));
}

TEST_F(Whitelist, IsAskedForAlsoUnderAnotherPolicyWhenTheQuestionIsTheWhitelistsAlone) {
  use(@[ @"com.example" ]);
  sdk->openInPolicy = 0;
  EXPECT_TRUE([util _whitelistApprovedAppId:@"com.example"]);
  EXPECT_FALSE([util allowsOpenInWithAppId:@"com.example"]);
}
