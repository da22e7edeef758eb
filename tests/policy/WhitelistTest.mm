// Which identifiers a pattern matches.
#include "Policy.h"

namespace {

class Pattern : public Policy {
protected:
  BOOL matches(NSString *pattern, NSString *appId) { return [util _doesAppID:appId matchPattern:pattern]; }
};

NSString *repeated(NSString *piece, NSUInteger count) {
  return [@"" stringByPaddingToLength:count * [piece length] withString:piece startingAtIndex:0];
}

} // namespace

TEST_F(Pattern, OfSeveralPiecesMatchesEveryIdentifierThatBeginsWithIt) {
  EXPECT_TRUE(matches(@"com.example", @"com.example"));
  EXPECT_TRUE(matches(@"com.example", @"com.example.mail"));
  EXPECT_TRUE(matches(@"com.example", @"com.examplesuite"));
  EXPECT_FALSE(matches(@"com.example", @"com.exampl"));
  EXPECT_FALSE(matches(@"com.example", @"com.exomple.mail"));
  EXPECT_FALSE(matches(@"com.example", @"org.example"));
  EXPECT_FALSE(matches(@"com.example", @"x.com.example"));
  EXPECT_FALSE(matches(@"com.example", @""));
}

TEST_F(Pattern, WithATrailingDotMatchesOnlyWhatGoesOnBehindIt) {
  EXPECT_TRUE(matches(@"com.example.", @"com.example.mail"));
  EXPECT_TRUE(matches(@"com.example.", @"com.example."));
  EXPECT_FALSE(matches(@"com.example.", @"com.example"));
  EXPECT_FALSE(matches(@"com.example.", @"com.examplesuite"));
}

TEST_F(Pattern, OfOnePieceMatchesOnlyItself) {
  EXPECT_TRUE(matches(@"mail", @"mail"));
  EXPECT_FALSE(matches(@"mail", @"mail.example"));
  EXPECT_FALSE(matches(@"mail", @"mailer"));
  EXPECT_FALSE(matches(@"mail", @"mai"));
  EXPECT_FALSE(matches(@"mail", @".mail"));
}

TEST_F(Pattern, OfOnePieceWithALeadingDotMatchesOnlyItself) {
  EXPECT_TRUE(matches(@".mail", @".mail"));
  EXPECT_FALSE(matches(@".mail", @".mail.example"));
  EXPECT_FALSE(matches(@".mail", @"mail"));
  EXPECT_FALSE(matches(@".mail", @"com.mail"));
}

TEST_F(Pattern, OfOnePieceWithATrailingDotMatchesOnlyItself) {
  EXPECT_TRUE(matches(@"com.", @"com."));
  EXPECT_FALSE(matches(@"com.", @"com.example"));
  EXPECT_FALSE(matches(@"com.", @"com"));
  EXPECT_TRUE(matches(@"..com..", @"..com.."));
  EXPECT_FALSE(matches(@"..com..", @"..com...x"));
}

TEST_F(Pattern, OfSeveralPiecesWithALeadingDotIsAPrefixWithTheDot) {
  EXPECT_TRUE(matches(@".com.example", @".com.example.mail"));
  EXPECT_FALSE(matches(@".com.example", @"com.example.mail"));
}

TEST_F(Pattern, WithAnEmptyPieceInsideHasSeveral) {
  EXPECT_TRUE(matches(@"com..example", @"com..example.mail"));
  EXPECT_FALSE(matches(@"com..example", @"com.example"));
}

TEST_F(Pattern, OfDotsOnlyMatchesOnlyItself) {
  EXPECT_TRUE(matches(@".", @"."));
  EXPECT_FALSE(matches(@".", @".mail"));
  EXPECT_FALSE(matches(@".", @""));
  EXPECT_FALSE(matches(@".", @"com.example"));
  EXPECT_TRUE(matches(@"...", @"..."));
  EXPECT_FALSE(matches(@"...", @"...."));
}

TEST_F(Pattern, ThatIsEmptyMatchesOnlyAnEmptyIdentifier) {
  EXPECT_TRUE(matches(@"", @""));
  EXPECT_FALSE(matches(@"", @"mail"));
  EXPECT_FALSE(matches(@"", @"com.example"));
}

TEST_F(Pattern, OrIdentifierThatIsNilDoesNotMatch) {
  EXPECT_FALSE(matches(@"mail", nil));
  EXPECT_FALSE(matches(@"", nil));
  EXPECT_FALSE(matches(nil, @"mail"));
  EXPECT_FALSE(matches(nil, @""));
  EXPECT_FALSE(matches(nil, nil));
}

TEST_F(Pattern, KeepsItsWhiteSpace) {
  EXPECT_TRUE(matches(@" ", @" "));
  EXPECT_FALSE(matches(@" ", @""));
  EXPECT_TRUE(matches(@" com.example", @" com.example.mail"));
  EXPECT_FALSE(matches(@" com.example", @"com.example.mail"));
  EXPECT_FALSE(matches(@"com.example ", @"com.example"));
  EXPECT_FALSE(matches(@"mail\n", @"mail"));
  // A blank beside the dots: they are not at the end, so they separate.
  EXPECT_TRUE(matches(@"com. ", @"com. example"));
  EXPECT_TRUE(matches(@" .", @" ."));
  EXPECT_FALSE(matches(@" .", @" .x"));
}

TEST_F(Pattern, HasNoWildcards) {
  EXPECT_FALSE(matches(@"*", @"com.example"));
  EXPECT_TRUE(matches(@"*", @"*"));
  EXPECT_FALSE(matches(@"com.*", @"com.example"));
  EXPECT_TRUE(matches(@"com.*", @"com.*.mail"));
  EXPECT_FALSE(matches(@"com.exampl?", @"com.example"));
  EXPECT_FALSE(matches(@"com.[a-z]", @"com.e"));
  EXPECT_FALSE(matches(@"com.%", @"com.example"));
}

TEST_F(Pattern, IsComparedWithItsCase) {
  EXPECT_FALSE(matches(@"com.Example", @"com.example.mail"));
  EXPECT_FALSE(matches(@"com.example", @"COM.EXAMPLE.mail"));
  EXPECT_FALSE(matches(@"Mail", @"mail"));
  EXPECT_FALSE(matches(@"com.É", @"com.é"));
}

TEST_F(Pattern, OfOtherAlphabetsMatchesLikeAnyOther) {
  EXPECT_TRUE(matches(@"рф.пример", @"рф.пример.почта"));
  EXPECT_TRUE(matches(@"com.größe", @"com.größe.mail"));
  EXPECT_TRUE(matches(@"com.😀", @"com.😀.mail"));
  EXPECT_TRUE(matches(@"почта", @"почта"));
  EXPECT_FALSE(matches(@"почта", @"почтальон"));
  EXPECT_FALSE(matches(@"com.größe", @"com.grosse"));
  EXPECT_FALSE(matches(@"com.😀", @"com.😁"));
  // Letters that look alike.
  EXPECT_FALSE(matches(@"com.exаmple", @"com.example"));
}

TEST_F(Pattern, IsComparedUnitByUnitWhateverTheCharactersMean) {
  NSString *const composed = @"com.caf\u00e9";
  NSString *const decomposed = @"com.cafe\u0301";
  EXPECT_FALSE(matches(composed, decomposed));
  EXPECT_FALSE(matches(decomposed, composed));
  EXPECT_TRUE(matches(composed, composed));
  EXPECT_TRUE(matches(decomposed, decomposed));
  // A prefix may end between a letter and its accent, and between the halves of a character.
  EXPECT_TRUE(matches(@"com.cafe", decomposed));
  NSMutableString *const half = [NSMutableString stringWithString:@"c.😀"];
  [half deleteCharactersInRange:NSMakeRange(3, 1)];
  ASSERT_EQ([half length], 3u);
  EXPECT_TRUE(matches(half, @"c.😀"));
  EXPECT_TRUE(matches(half, @"c.😁"));
  // Full-width letters, ligatures and characters that are not seen are themselves.
  EXPECT_FALSE(matches(@"com.ｅ", @"com.e"));
  EXPECT_FALSE(matches(@"com.ﬁle", @"com.file"));
  EXPECT_FALSE(matches(@"com.\u200bexample", @"com.example"));
  // A dot separates also with an accent on it, and another full stop never does.
  EXPECT_TRUE(matches(@"com.\u0301example", @"com.\u0301example.mail"));
  EXPECT_FALSE(matches(@"com。example", @"com。example.mail"));
  EXPECT_TRUE(matches(@"com。example", @"com。example"));
}

TEST_F(Pattern, WithAZeroInItIsComparedToItsEnd) {
  const unichar zero[] = {'c', 'o', 'm', '.', 'a', 0, 'b'};
  NSString *const pattern = [NSString stringWithCharacters:zero length:7];
  EXPECT_TRUE(matches(pattern, pattern));
  EXPECT_TRUE(matches(pattern, [pattern stringByAppendingString:@"c"]));
  EXPECT_FALSE(matches(pattern, @"com.a"));
  EXPECT_FALSE(matches(pattern, @"com.axb"));
  EXPECT_FALSE(matches(@"com.axb", pattern));
}

TEST_F(Pattern, OfAnotherAlphabetAndOfAnyLengthIsComparedWhole) {
  for (const NSUInteger pieces : {31u, 32u, 33u, 64u, 65u, 100u}) {
    NSString *const pattern = repeated(@"ком.", pieces);
    EXPECT_TRUE(matches(pattern, [pattern stringByAppendingString:@"mail"])) << pieces;
    for (NSUInteger at = 0; at < [pattern length]; ++at) {
      NSString *const wrong = [pattern stringByReplacingCharactersInRange:NSMakeRange(at, 1) withString:@"х"];
      EXPECT_FALSE(matches(wrong, [pattern stringByAppendingString:@"mail"])) << pieces << " pieces, at " << at;
    }
  }
}

TEST_F(Pattern, OfAnyLengthIsComparedWhole) {
  for (const NSUInteger pieces : {1u, 2u, 30u, 31u, 32u, 33u, 63u, 64u, 65u, 250u, 5000u}) {
    NSString *const pattern = repeated(@"com.", pieces);
    NSString *const identifier = [pattern stringByAppendingString:@"mail"];
    EXPECT_EQ(matches(pattern, identifier), pieces > 1) << pieces;
    // One character of it wrong, wherever that is.
    const NSUInteger length = [pattern length];
    for (NSUInteger at = 0; at < length; at += length > 1000 ? 997 : 1) {
      NSString *const wrong = [pattern stringByReplacingCharactersInRange:NSMakeRange(at, 1) withString:@"x"];
      EXPECT_FALSE(matches(wrong, identifier)) << pieces << " pieces, at " << at;
      EXPECT_FALSE(matches(pattern, [wrong stringByAppendingString:@"mail"])) << pieces << " pieces, at " << at;
    }
  }
}
