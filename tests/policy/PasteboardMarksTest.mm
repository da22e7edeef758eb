// Which items are the SDK's: the prefixes' texts and the expressions that are made of them.
#include "PasteboardGuard.h"

using Marks = PasteboardGuard;

namespace {

struct Mark {
  const char *name;
  NSString *prefix;
  /// Types of the SDK's items, and of others.
  NSArray *marked;
  NSArray *unmarked;
};

} // namespace

@interface QVTestItem : NSDictionary {
@public
  NSArray *types;
  NSUInteger given;
}
@end

@implementation QVTestItem
- (NSUInteger)count {
  return [types count];
}
- (id)objectForKey:(id)key {
  return [types containsObject:key] ? @"value" : nil;
}
- (NSEnumerator *)keyEnumerator {
  return [types objectEnumerator];
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state objects:(id *)buffer count:(NSUInteger)count {
  (void)count;
  if (given == [types count]) return 0;
  state->state = 1;
  state->mutationsPtr = reinterpret_cast<unsigned long *>(self);
  state->itemsPtr = buffer;
  buffer[0] = [types objectAtIndex:given++];
  return 1;
}
@end

TEST_F(Marks, AreOnTypesAsTheirTextsAndExpressionsSay) {
  NSArray *const anything = @[ @"a", @"b", @"a.b", @"*", @"[", @"com.example.type" ];
  const Mark marks[] = {
      {"plain text at the start", @"com.example.", @[ @"com.example.", @"com.example.x" ],
       @[ @"com.example", @"xcom.example.", @"COM.EXAMPLE.X", @"comxexamplex" ]},
      {"plain text that occurs again", @"ab", @[ @"abab", @"ab" ], @[ @"cab", @"a" ]},
      {"plain text that would mean something in an expression", @"a[(+\\*.", @[ @"a[(+\\*.b" ], anything},
      {"no text", @"", @[], anything},
      {"a single per cent sign", @"a%.b", @[ @"a%.b" ], @[ @"a.b", @"a" ]},
      {"a placeholder between dots", @"a.%@.b", @[ @"a.b", @"a..b", @"a....b", @"a.b.c", @"a.bc" ],
       @[ @"a.x.b", @"a.%@.b", @"a.*.b", @"axb", @"ab", @"xa.b", @"A.B" ]},
      {"a placeholder after a dot, at the end", @"com.example.%@",
       @[ @"com.example", @"com.example.", @"com.example.x", @"com.examplesuite" ],
       @[ @"com.exampl", @"comxexample", @"x.com.example" ]},
      {"a placeholder after a letter", @"ab%@c", @[ @"ac", @"abc", @"abbbc" ], @[ @"ab", @"abxc", @"xabc" ]},
      {"a placeholder after the only letter, which need not be there", @"a%@", @[ @"a", @"aa", @"b", @"com.example" ],
       @[]},
      {"a placeholder after the only dot", @".%@", @[ @".", @"..", @"b", @"com.example" ], @[]},
      {"several placeholders", @"a.%@.%@.b", @[ @"a.b", @"a...b" ], @[ @"a.x.y.b", @"ab" ]},
      {"a placeholder at the start", @"%@.b", @[], @[ @".b", @"a.b", @"*.b", @"%@.b", @"b" ]},
      {"nothing but a placeholder", @"%@", @[], anything},
      {"two placeholders beside each other", @"a.%@%@", @[], anything},
      {"a bracket that is not closed", @"a[%@", @[], anything},
      {"a bracket that is", @"[a%@]b", @[ @"ab", @"*b" ], @[ @"b", @"[a%@]b", @"bb" ]},
      {"a parenthesis that is not closed", @"a(%@", @[], anything},
      {"a parenthesis that was not opened", @"a)b%@", @[], anything},
      {"parentheses", @"a(b%@)c", @[ @"ac", @"abbc" ], @[ @"a(b)c" ]},
      {"a plus sign before the placeholder", @"a+%@", @[], anything},
      {"a plus sign behind it", @"a%@+", @[ @"a", @"b" ], @[]},
      {"a plus sign at the start", @"+a%@", @[], anything},
      {"a backslash before the placeholder", @"a\\%@b", @[ @"a*b" ], @[ @"a\\b", @"ab", @"aab" ]},
      {"a lone backslash at the end", @"a%@\\", @[], anything},
      {"a backslash before a dot, which the dot's own undoes", @"a\\.b%@c", @[ @"a\\xbc", @"a\\.c" ], @[ @"a.bc" ]},
      {"an alternative", @"ab%@|xy", @[ @"ab", @"a", @"xyz" ], @[ @"b", @"zxy" ]},
      {"a letter beyond ASCII", @"\u00e9%@\u00e8.", @[ @"\u00e8.", @"\u00e9\u00e9\u00e8.x" ], @[ @"e.", @"\u00e9." ]},
  };
  for (const Mark &mark : marks) {
    setPrefixes(@[ mark.prefix ]);
    for (NSString *type in mark.marked)
      EXPECT_EQ([util _isZorbelItem:@{type : @"value"}], YES) << mark.name << ": " << [type UTF8String];
    for (NSString *type in mark.unmarked)
      EXPECT_EQ([util _isZorbelItem:@{type : @"value"}], NO) << mark.name << ": " << [type UTF8String];
  }
}

TEST_F(Marks, OneOfAListIsEnough) {
  setPrefixes(@[ @"[%@", @"com.example.a", @"net.%@.b" ]);
  EXPECT_EQ([util _isZorbelItem:@{@"com.example.a.b" : @"value"}], YES);
  EXPECT_EQ([util _isZorbelItem:@{@"net.b" : @"value"}], YES);
  EXPECT_EQ([util _isZorbelItem:@{@"com.example.b" : @"value"}], NO);
}

TEST_F(Marks, AreNoneInAnEmptyList) {
  setPrefixes(@[]);
  EXPECT_EQ([util _isZorbelItem:zorbels(@"sdk")], NO);
  EXPECT_EQ([[util _zorbelItems:@[ zorbels(@"sdk") ]] count], 0u);
}

TEST_F(Marks, AreReadAnewEachTime) {
  EXPECT_EQ([util _isZorbelItem:zorbels(@"sdk")], YES);
  setPrefixes(@[ @"com.example.other." ]);
  EXPECT_EQ([util _isZorbelItem:zorbels(@"sdk")], NO);
  EXPECT_EQ([util _isZorbelItem:@{@"com.example.other.x" : @"value"}], YES);
}

TEST_F(Marks, OfOneTypeAreEnoughForAnItemWithSeveral) {
  EXPECT_EQ([util _isZorbelItem:(@{
                    @"public.utf8-plain-text" : @"a",
                    @"com.example.sdk.item" : @"b",
                    @"public.url" : @"c",
                  })],
            YES);
  EXPECT_EQ([util _isZorbelItem:(@{@"public.utf8-plain-text" : @"a", @"public.url" : @"com.example.sdk.item"})], NO);
}

TEST_F(Marks, AreLookedForInTheItemsOwnOrderAndNoFurtherThanTheFirst) {
  QVTestItem *const item = [[[QVTestItem alloc] init] autorelease];
  item->types = @[ @"first", @"com.example.sdk.second", @"com.example.sdk.third", @"fourth" ];
  EXPECT_EQ([util _isZorbelItem:item], YES);
  EXPECT_EQ(item->given, 2u);
  item->given = 0;
  item->types = @[ @"first", @"second", @"third" ];
  EXPECT_EQ([util _isZorbelItem:item], NO);
  EXPECT_EQ(item->given, 3u);
}

TEST_F(Marks, AreNotOnWhatIsNoItemOrHasNoType) {
  EXPECT_EQ([util _isZorbelItem:@{}], NO);
  EXPECT_EQ([util _isZorbelItem:nil], NO);
  EXPECT_EQ([util _isZorbelItem:(id) @"com.example.sdk.item"], NO);
  EXPECT_EQ([util _isZorbelItem:(id) @[ @"com.example.sdk.item" ]], NO);
  EXPECT_EQ([util _isZorbelItem:@{[NSNumber numberWithInt:1] : @"value"}], NO);
}

TEST_F(Marks, GiveTheSetOfTheSDKsItems) {
  NSArray *const items = @[ own(@"a"), zorbels(@"b"), zorbels(@"c"), zorbels(@"b"), @{} ];
  EXPECT_TRUE([[util _zorbelItems:items] isEqual:([NSSet setWithObjects:zorbels(@"b"), zorbels(@"c"), nil])]);
  EXPECT_TRUE([[util _zorbelItems:@[]] isEqual:[NSSet set]]);
  EXPECT_TRUE([[util _zorbelItems:nil] isEqual:[NSSet set]]);
}

TEST_F(Marks, ThatMakeNoExpressionLeaveTheGuardItsWork) {
  setPrefixes(@[ @"%@", @"[%@", @"a(%@", @"+%@", @"%@\\" ]);
  hold(@[ own(@"before"), zorbels(@"no longer the SDK's") ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied"), zorbels(@"new") ]);
  expectHeld(@[ own(@"before"), zorbels(@"no longer the SDK's") ]);
}
