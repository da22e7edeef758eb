// Restoring as arithmetic of sets, on items of every kind and number.
#include "PasteboardGuard.h"

#include <algorithm>
#include <random>

namespace {

class Arithmetic : public PasteboardGuard {
protected:
  void expectDifferent(id left, id right) {
    hold(@[ @{@"com.example.value" : left} ]);
    [util takeSnapshot];
    leaveWith(@[ @{@"com.example.value" : right} ]);
    EXPECT_EQ(pasteboard->writes, 1) << [[left description] UTF8String] << " and " << [[right description] UTF8String];
  }

  void expectSame(id left, id right) {
    hold(@[ @{@"com.example.value" : left} ]);
    [util takeSnapshot];
    leaveWith(@[ @{@"com.example.value" : right} ]);
    EXPECT_EQ(pasteboard->writes, 0) << [[left description] UTF8String] << " and " << [[right description] UTF8String];
  }
};

NSData *dataOf(NSUInteger length, char last) {
  NSMutableData *const data = [NSMutableData dataWithLength:length];
  if (length) static_cast<char *>([data mutableBytes])[length - 1] = last;
  return data;
}

/// A subset of few items, some of them more than once, in any order.
std::vector<int> anyItems(std::mt19937 &random) {
  std::vector<int> items(random() % 7);
  for (int &item : items)
    item = static_cast<int>(random() % 6);
  return items;
}

} // namespace

TEST_F(Arithmetic, TakesItemsForEqualThatHaveTheSameTypesAndEqualValues) {
  expectSame([NSMutableString stringWithString:@"text"], @"text");
  expectSame([NSMutableData dataWithBytes:"ab" length:2], [NSData dataWithBytes:"ab" length:2]);
  expectSame([NSNumber numberWithInt:1], [NSNumber numberWithLongLong:1]);
  expectSame([NSNumber numberWithInt:1], [NSNumber numberWithDouble:1]);
  expectSame([NSNumber numberWithInt:1], [NSNumber numberWithBool:YES]);
  expectSame([NSURL URLWithString:@"a:b"], [NSURL URLWithString:@"a:b"]);
  expectSame([NSMutableArray arrayWithObject:@"a"], @[ @"a" ]);
  expectSame([NSMutableDictionary dictionaryWithObject:@[ @"a" ] forKey:@"k"], @{@"k" : @[ @"a" ]});
  expectSame([NSDate dateWithTimeIntervalSinceReferenceDate:5], [NSDate dateWithTimeIntervalSinceReferenceDate:5]);
}

TEST_F(Arithmetic, TakesItemsForDifferentThatDifferInATypeOrAValue) {
  expectDifferent(@"text", @"Text");
  expectDifferent(@"text", @[ @"text" ]);
  expectDifferent([NSNumber numberWithInt:1], [NSNumber numberWithInt:2]);
  expectDifferent([NSNumber numberWithInt:1], @"1");
  expectDifferent(@[ @"a", @"b" ], @[ @"b", @"a" ]);
  expectDifferent((@{@"a" : @"1", @"b" : @"2"}), (@{@"a" : @"2", @"b" : @"1"}));
  expectDifferent([NSURL URLWithString:@"a:b"], @"a:b");
  expectDifferent([NSData data], @"");
  expectDifferent(@[ @[ @[ @[ @[ @[ @[ @"deep" ] ] ] ] ] ] ], @[ @[ @[ @[ @[ @[ @[ @"deeper" ] ] ] ] ] ] ]);

  hold(@[ @{@"a" : @"text"} ]);
  [util takeSnapshot];
  leaveWith(@[ @{@"b" : @"text"} ]);
  EXPECT_EQ(pasteboard->writes, 1);
  leaveWith(@[ @{@"a" : @"text", @"b" : @"text"} ]);
  EXPECT_EQ(pasteboard->writes, 1);
}

TEST_F(Arithmetic, TellsMegabytesApartThatDifferInOneByte) {
  const NSUInteger length = 4 << 20;
  expectSame(dataOf(length, 'a'), dataOf(length, 'a'));
  expectDifferent(dataOf(length, 'a'), dataOf(length, 'b'));
  NSMutableData *const middle = [NSMutableData dataWithLength:length];
  static_cast<char *>([middle mutableBytes])[length / 2] = 'x';
  expectDifferent(dataOf(length, 0), middle);
}

TEST_F(Arithmetic, CountsAnItemWithoutTypesAsTheApps) {
  hold(@[ own(@"a"), @{} ]);
  [util takeSnapshot];
  leaveWith(@[ @{}, own(@"a"), @{} ]);
  EXPECT_EQ(pasteboard->writes, 0);
  leaveWith(@[ @{} ]);
  expectHeld(@[ own(@"a"), @{} ]);
}

TEST_F(Arithmetic, PutsEqualItemsBackOnce) {
  hold(@[ own(@"a"), own(@"b"), own(@"a"), zorbels(@"x") ]);
  [util takeSnapshot];
  leaveWith(@[ zorbels(@"y"), own(@"copied"), own(@"copied"), zorbels(@"y") ]);
  expectHeld(@[ own(@"a"), own(@"b"), zorbels(@"y") ]);
}

TEST_F(Arithmetic, PutsAnItemOfSeveralTypesBackWhole) {
  NSDictionary *const several = @{
    @"public.utf8-plain-text" : @"a",
    @"public.url" : [NSURL URLWithString:@"a:b"],
    @"com.example.list" : @[ @"a", @{@"b" : dataOf(3, 'c')} ],
  };
  hold(@[ several ]);
  [util takeSnapshot];
  leaveWith(@[ own(@"copied") ]);
  expectHeld(@[ several ]);
}

TEST_F(Arithmetic, OutlivesItemsThatAreNone) {
  hold(@[ (id) @"no item", own(@"a"), [NSNull null] ]);
  [util takeSnapshot];
  leaveWith(@[ (id) @"another", own(@"copied"), zorbels(@"sdk") ]);
  expectHeld(@[ (id) @"no item", own(@"a"), [NSNull null], zorbels(@"sdk") ]);
}

TEST_F(Arithmetic, HandlesThousandsOfItemsThatLookAlike) {
  NSMutableArray *const before = [NSMutableArray array];
  NSMutableArray *const after = [NSMutableArray array];
  // Alike in what Foundation makes of them: as many types each, and the same first hundreds of bytes.
  for (int i = 0; i < 5000; ++i) {
    NSMutableData *const data = [NSMutableData dataWithLength:500];
    memcpy(static_cast<char *>([data mutableBytes]) + 490, &i, sizeof i);
    NSNumber *const number = [NSNumber numberWithInt:i];
    [before addObject:@{@"com.example.data" : data, @"com.example.list" : @[ @{@"number" : number} ]}];
    [after insertObject:[before lastObject] atIndex:0];
  }
  hold(before);
  [util takeSnapshot];
  leaveWith(after);
  EXPECT_EQ(pasteboard->writes, 0);
  [after replaceObjectAtIndex:0 withObject:own(@"copied")];
  leaveWith(after);
  EXPECT_EQ(pasteboard->writes, 1);
  EXPECT_TRUE([pasteboard->held isEqual:before]);
}

// The rule once more, on numbers: items 0 and 1 are the SDK's.
TEST_F(Arithmetic, DoesWhatTheRuleSaysWithAnyItems) {
  const auto item = [](int number) {
    NSString *const text = [NSString stringWithFormat:@"%d", number];
    return number < 2 ? zorbels(text) : own(text);
  };
  const auto itemsOf = [&](const std::vector<int> &numbers) {
    NSMutableArray *const items = [NSMutableArray array];
    for (const int number : numbers)
      [items addObject:item(number)];
    return items;
  };
  const auto chosen = [](const std::vector<int> &numbers, bool zorbel) {
    std::set<int> found;
    for (const int number : numbers)
      if ((number < 2) == zorbel) found.insert(number);
    return found;
  };
  std::mt19937 random(20240611);
  int written = 0;
  for (int round = 0; round < 3000; ++round) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    const std::vector<int> then = anyItems(random), now = anyItems(random);
    hold(itemsOf(then));
    [util takeSnapshot];
    leaveWith(itemsOf(now));

    const std::set<int> restBefore = chosen(then, false), restNow = chosen(now, false);
    if (restNow.empty() || restNow == restBefore) {
      EXPECT_EQ(pasteboard->writes, 0);
      expectHeld(itemsOf(now));
    } else {
      ++written;
      EXPECT_EQ(pasteboard->writes, 1);
      // The rest first, then the SDK's, each item once.
      std::multiset<int> rest, zorbel;
      bool inOrder = true;
      for (NSDictionary *each in pasteboard->held) {
        const int number = [[[each allValues] lastObject] intValue];
        (number < 2 ? zorbel : rest).insert(number);
        inOrder = inOrder && (number < 2 || zorbel.empty());
      }
      EXPECT_TRUE(inOrder);
      EXPECT_EQ(rest, std::multiset<int>(restBefore.begin(), restBefore.end()));
      const std::set<int> zorbelNow = chosen(now, true);
      EXPECT_EQ(zorbel, std::multiset<int>(zorbelNow.begin(), zorbelNow.end()));
    }
    [pool drain];
  }
  // Both ways were gone.
  EXPECT_GT(written, 500);
  EXPECT_LT(written, 2900);
}
