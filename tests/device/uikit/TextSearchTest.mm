// Searching text as the phone does, where Debian's Foundation has other ideas.
#import <Foundation/Foundation.h>

#include <gtest/gtest.h>

namespace {

class TextSearch : public testing::Test {
protected:
  void SetUp() override { pool_ = [[NSAutoreleasePool alloc] init]; }
  void TearDown() override { [pool_ drain]; }

private:
  NSAutoreleasePool *pool_ = nil;
};

bool isNowhere(NSRange range) { return range.location == NSNotFound && range.length == 0; }

} // namespace

TEST_F(TextSearch, FindsAnExpressionThatIsNoneNowhere) {
  for (NSString *expression in @[ @"[a", @"(a", @")", @"*", @"+a", @"?", @"a\\", @"a**", @"a{2", @"" ]) {
    EXPECT_TRUE(isNowhere([@"aa[(+" rangeOfString:expression options:NSRegularExpressionSearch]))
        << [expression UTF8String];
  }
}

TEST_F(TextSearch, FindsAnExpressionWhereItMatches) {
  const NSRange later = [@"xaab" rangeOfString:@"a+" options:NSRegularExpressionSearch];
  EXPECT_EQ(later.location, 1u);
  EXPECT_EQ(later.length, 2u);
  const NSRange empty = [@"xaab" rangeOfString:@"a*" options:NSRegularExpressionSearch];
  EXPECT_EQ(empty.location, 0u);
  EXPECT_EQ(empty.length, 0u);
  EXPECT_TRUE(isNowhere([@"xaab" rangeOfString:@"a{3}" options:NSRegularExpressionSearch]));
}

TEST_F(TextSearch, FindsTheEmptyTextNowhere) {
  EXPECT_TRUE(isNowhere([@"text" rangeOfString:@"" options:0]));
  EXPECT_TRUE(isNowhere([@"text" rangeOfString:@""]));
  EXPECT_TRUE(isNowhere([@"" rangeOfString:@"" options:NSCaseInsensitiveSearch]));
}

TEST_F(TextSearch, FindsPlainTextWhereItFirstStands) {
  EXPECT_EQ([@"a.b.b" rangeOfString:@".b" options:0].location, 1u);
  EXPECT_EQ([@"a.b" rangeOfString:@"*" options:0].location, static_cast<NSUInteger>(NSNotFound));
}

TEST_F(TextSearch, TellsWhyAnExpressionCannotBeMade) {
  NSError *error = nil;
  EXPECT_EQ([NSRegularExpression regularExpressionWithPattern:@"[a" options:0 error:&error], nil);
  EXPECT_TRUE([[error domain] isEqual:NSCocoaErrorDomain]);
  EXPECT_EQ([error code], 2048);
  EXPECT_TRUE([[[error userInfo] objectForKey:@"NSInvalidValue"] isEqual:@"[a"]);
  EXPECT_EQ([NSRegularExpression regularExpressionWithPattern:@"(" options:0 error:NULL], nil);
}
