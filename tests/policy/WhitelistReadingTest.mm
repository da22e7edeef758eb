// How patterns are read: whichever way a string keeps its text, and without asking for memory.
#include "Policy.h"

#include "support/Allocations.h"

/// A string that gives out its text in UTF-16 only.
@interface QVWideString : NSString {
  NSString *_text;
}
+ (instancetype)of:(NSString *)text;
@end

@implementation QVWideString

+ (instancetype)of:(NSString *)text {
  QVWideString *const made = [[[self alloc] init] autorelease];
  made->_text = [text copy];
  return made;
}

- (void)dealloc {
  [_text release];
  [super dealloc];
}

- (NSUInteger)length {
  return [_text length];
}

- (unichar)characterAtIndex:(NSUInteger)index {
  return [_text characterAtIndex:index];
}

@end

namespace {

class Reading : public Policy {
protected:
  /// The rule's answer, which must not depend on how either string keeps its text.
  void expect(const std::u16string &pattern, const std::u16string &appId, bool answer) {
    NSString *const patterns[] = {inBytesIfPossible(pattern), [QVWideString of:inBytesIfPossible(pattern)]};
    NSString *const appIds[] = {inBytesIfPossible(appId), [QVWideString of:inBytesIfPossible(appId)]};
    for (const bool widePattern : {false, true})
      for (const bool wideAppId : {false, true})
        EXPECT_EQ([util _doesAppID:appIds[wideAppId] matchPattern:patterns[widePattern]], answer)
            << [patterns[0] UTF8String] << " (" << widePattern << ") for " << [appIds[0] UTF8String] << " ("
            << wideAppId << ")";
  }

  /// Foundation keeps such a string in Latin-1 where its text allows it.
  static NSString *inBytesIfPossible(const std::u16string &text) {
    NSMutableData *const latin1 = [NSMutableData data];
    for (const char16_t unit : text) {
      if (unit > 0xff)
        return [NSString stringWithCharacters:reinterpret_cast<const unichar *>(text.data()) length:text.size()];
      const auto byte = static_cast<unsigned char>(unit);
      [latin1 appendBytes:&byte length:1];
    }
    return [[[NSString alloc] initWithData:latin1 encoding:NSISOLatin1StringEncoding] autorelease];
  }

  std::size_t allocationsOfAQuestion(NSString *(*make)(int), int patterns) {
    NSMutableArray *const list = [NSMutableArray array];
    for (int i = 0; i < patterns; ++i)
      [list addObject:make(i)];
    [sdk->openInWhitelist release];
    sdk->openInWhitelist = [list copy];
    sdk->openInPolicy = 2;
    NSString *const appId = [NSString stringWithUTF8String:"com.example.department.mail.viewer"];
    EXPECT_FALSE([util allowsOpenInWithAppId:appId]);
    return allocationsIn([&] { [util allowsOpenInWithAppId:appId]; });
  }
};

} // namespace

TEST_F(Reading, TheTwoFormsOfAStringAreWhatTheseTestsTakeThemFor) {
  ASSERT_EQ([inBytesIfPossible(u"com.example") fastestEncoding], NSISOLatin1StringEncoding);
  ASSERT_NE([[QVWideString of:@"com.example"] fastestEncoding], NSISOLatin1StringEncoding);
  ASSERT_NE([inBytesIfPossible(u"com.ж") fastestEncoding], NSISOLatin1StringEncoding);
}

TEST_F(Reading, OneWrongCharacterAnywhereIsSeenInPatternsOfEveryLength) {
  for (std::size_t length = 2; length < 40; ++length) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    std::u16string pattern = u"c.";
    for (std::size_t at = 2; at < length; ++at)
      pattern += static_cast<char16_t>(u'a' + at % 23);
    const bool several = length > 2;
    expect(pattern, pattern, true);
    expect(pattern, pattern + u"z", several);
    expect(pattern + u"z", pattern, false);
    for (std::size_t at = 0; at < length; ++at) {
      std::u16string wrong = pattern;
      wrong[at] = u'_';
      expect(wrong, pattern, false);
      expect(wrong, pattern + u"z", false);
    }
    [pool drain];
  }
}

TEST_F(Reading, CharactersAreThoseOfLatin1FromItsFirstToItsLast) {
  for (char16_t unit = 1; unit <= 0xff; ++unit) {
    const std::u16string text = std::u16string(u"com.example.") + unit;
    expect(text, text, true);
    expect(text, text + u"ж", true);
    expect(text, std::u16string(u"com.example.") + static_cast<char16_t>(unit + 0x100), false);
    expect(text, std::u16string(u"com.example.") + static_cast<char16_t>(unit ^ 0x80), false);
  }
}

TEST_F(Reading, AnIdentifierOfWhichOnlyTheBeginningIsLatin1MatchesUpToThere) {
  expect(u"com.exa", u"com.example.жук", true);
  expect(u"com.example.", u"com.example.жук", true);
  expect(u"com.example.x", u"com.example.жук", false);
  // The letter's low byte is that of "6".
  expect(u"com.example.6", u"com.example.жук", false);
  expect(u"com.example.ж", u"com.example.жук", true);
  expect(u"com.example.жук", u"com.example.жук", true);
  expect(u"com.example.жуки", u"com.example.жук", false);
  // Nor is what stands behind such a letter taken to stand in its place.
  expect(u"com.example", u"com.exжample", false);
  expect(u"com.exжample", u"com.example", false);
}

TEST_F(Reading, AZeroIsACharacterLikeAnyOther) {
  const std::u16string zero = std::u16string(u"com.a") + u'\0' + u"b";
  expect(zero, zero, true);
  expect(zero, zero + u"c", true);
  expect(zero, u"com.a", false);
  expect(u"com.a", zero, true);
  expect(std::u16string(u"com.a") + u'\0', zero, true);
  expect(std::u16string(u"com.a") + u'\0', u"com.ab", false);
  expect(std::u16string(u"com.a") + u'\0', u"com.a", false);
}

TEST_F(Reading, AThousandPatternsTakeNoMoreMemoryThanOne) {
  using Make = NSString *(*)(int);
  const Make makes[] = {
      [](int i) -> NSString * { return [NSString stringWithFormat:@"org.vendor%d.product", i]; },
      [](int i) -> NSString * { return [NSString stringWithFormat:@"com.example.department.%06d", i]; },
      [](int i) -> NSString * { return [NSString stringWithFormat:@"com.example.department.%04d.viewer", i]; },
      [](int i) -> NSString * { return [NSString stringWithFormat:@"com.example.отдел%d", i]; },
      [](int i) -> NSString * { return [NSMutableString stringWithFormat:@"com.example.app%d", i]; },
      [](int i) -> NSString * {
        return [@"com.example.department.and.some.more.of.it.app" stringByAppendingFormat:@"%d", i];
      },
  };
  for (const Make make : makes) {
    const std::size_t forOne = allocationsOfAQuestion(make, 1);
    EXPECT_GT(forOne, 0u);
    EXPECT_LT(forOne, 10u);
    EXPECT_EQ(allocationsOfAQuestion(make, 1000), forOne) << [make(7) UTF8String];
  }
}
