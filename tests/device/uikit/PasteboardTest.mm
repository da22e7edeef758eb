// The pasteboard as one app sees it.
#import <UIKit/UIKit.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

/// Keeps the notifications that it is sent, and tells whether each came on the main thread.
@interface QVTestPasteboardWatcher : NSObject {
@public
  NSMutableArray *notifications;
  BOOL allOnMainThread;
  void (^whenChanged)(void);
}
@end

@implementation QVTestPasteboardWatcher

- (instancetype)init {
  if ((self = [super init])) {
    notifications = [[NSMutableArray alloc] init];
    allOnMainThread = YES;
    for (NSString *name in @[ UIPasteboardChangedNotification, UIPasteboardRemovedNotification ])
      [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(note:) name:name object:nil];
  }
  return self;
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [notifications release];
  [super dealloc];
}

- (void)note:(NSNotification *)notification {
  [notifications addObject:notification];
  allOnMainThread = allOnMainThread && [NSThread isMainThread];
  if (whenChanged) whenChanged();
}

@end

namespace {

/// Name and reason of the exception that `work` raises.
std::string raised(void (^work)(void)) {
  @try {
    work();
  } @catch (NSException *exception) {
    return [[NSString stringWithFormat:@"%@: %@", [exception name], [exception reason]] UTF8String];
  }
  return "nothing";
}

class Pasteboard : public testing::Test {
protected:
  void SetUp() override {
    pool_ = [[NSAutoreleasePool alloc] init];
    general = [UIPasteboard generalPasteboard];
    watcher = [[[QVTestPasteboardWatcher alloc] init] autorelease];
  }
  void TearDown() override { [pool_ drain]; }

  NSDictionary *lastInfo() { return [[watcher->notifications lastObject] userInfo]; }

  void expectRoundTrip(id value) {
    [general setItems:@[ @{@"com.example.value" : value} ]];
    id const found = [[[general items] objectAtIndex:0] objectForKey:@"com.example.value"];
    EXPECT_TRUE([found isEqual:value]) << [[value description] UTF8String] << " came back as "
                                       << [[found description] UTF8String];
  }

  void expectRefused(NSArray *items, const std::string &problem) {
    [general setItems:@[ @{@"com.example.kept" : @"kept"} ]];
    const NSInteger before = [general changeCount];
    EXPECT_EQ(raised(^{
                [general setItems:items];
              }), "NSInvalidArgumentException: -[UIPasteboard setItems:]: a pasteboard does not take " + problem);
    EXPECT_TRUE([[general items] isEqual:(@[ @{@"com.example.kept" : @"kept"} ])]);
    EXPECT_EQ([general changeCount], before);
  }

  UIPasteboard *general = nil;
  QVTestPasteboardWatcher *watcher = nil;

private:
  NSAutoreleasePool *pool_ = nil;
};

NSSet *typesUnder(NSString *key, NSDictionary *info) { return [NSSet setWithArray:[info objectForKey:key]]; }

} // namespace

TEST_F(Pasteboard, IsEmptyOnANewDevice) {
  EXPECT_TRUE([[general items] isEqual:@[]]);
  EXPECT_EQ([general numberOfItems], 0);
  EXPECT_EQ([general changeCount], 0);
  EXPECT_TRUE([[general pasteboardTypes] isEqual:@[]]);
  EXPECT_EQ([general string], nil);
  EXPECT_EQ([general strings], nil);
  EXPECT_EQ([general URL], nil);
  EXPECT_EQ([general URLs], nil);
  EXPECT_EQ([general hasStrings], NO);
  EXPECT_EQ([general hasURLs], NO);
  EXPECT_EQ([general valueForPasteboardType:@"public.text"], nil);
  EXPECT_EQ([general dataForPasteboardType:@"public.text"], nil);
}

TEST_F(Pasteboard, IsAlwaysTheSameObject) {
  EXPECT_EQ([UIPasteboard generalPasteboard], general);
  EXPECT_EQ([UIPasteboard pasteboardWithName:UIPasteboardNameGeneral create:NO], general);
  EXPECT_TRUE([[general name] isEqual:UIPasteboardNameGeneral]);
}

TEST_F(Pasteboard, GivesBackItemsWithTheirTypesValuesAndOrder) {
  NSArray *const items = @[
    @{@"public.utf8-plain-text" : @"first", @"com.example.a" : @"second"},
    @{},
    @{@"com.example.a" : @"first"},
    @{@"com.example.a" : @"first"},
  ];
  [general setItems:items];
  EXPECT_TRUE([[general items] isEqual:items]);
  EXPECT_EQ([general numberOfItems], 4);
}

TEST_F(Pasteboard, GivesBackValuesOfEveryKind) {
  expectRoundTrip(@"");
  expectRoundTrip(@"text \u00e9 \U0001F600");
  expectRoundTrip([NSData data]);
  expectRoundTrip([NSData dataWithBytes:"\0\xff\0" length:3]);
  expectRoundTrip([NSURL URLWithString:@"https://example.com/a?b=%20#c"]);
  expectRoundTrip([NSURL fileURLWithPath:@"/tmp/with blank"]);
  expectRoundTrip([NSDate dateWithTimeIntervalSinceReferenceDate:-1.25]);
  expectRoundTrip(@[ @"a", @[ @{@"key" : @[ [NSNumber numberWithInt:1] ]} ], @{} ]);
  expectRoundTrip(@{@"a" : @{@"b" : [NSData dataWithBytes:"x" length:1]}, @"" : @[]});
}

TEST_F(Pasteboard, GivesBackNumbersAsTheyWere) {
  for (NSNumber *number in @[
         [NSNumber numberWithInt:0], [NSNumber numberWithInt:-7], [NSNumber numberWithLongLong:INT64_MIN],
         [NSNumber numberWithLongLong:INT64_MAX], [NSNumber numberWithUnsignedLongLong:UINT64_MAX],
         [NSNumber numberWithDouble:1.1], [NSNumber numberWithFloat:0.5f], [NSNumber numberWithDouble:-0.0],
         [NSNumber numberWithChar:'c'], [NSNumber numberWithUnsignedChar:200], [NSNumber numberWithBool:YES]
       ])
    expectRoundTrip(number);
  [general setItems:@[ @{@"t" : [NSNumber numberWithBool:YES]} ]];
  EXPECT_STREQ([[[[general items] objectAtIndex:0] objectForKey:@"t"] objCType],
               [[NSNumber numberWithBool:YES] objCType]);
}

TEST_F(Pasteboard, GivesBackMegabytes) {
  NSMutableData *const data = [NSMutableData dataWithLength:8 << 20];
  memset([data mutableBytes], 'x', [data length]);
  expectRoundTrip(data);
}

TEST_F(Pasteboard, KeepsCopies) {
  NSMutableString *const text = [NSMutableString stringWithString:@"before"];
  NSMutableDictionary *const item = [NSMutableDictionary dictionaryWithObject:@[ text ] forKey:@"com.example.a"];
  NSMutableArray *const items = [NSMutableArray arrayWithObject:item];
  [general setItems:items];
  [text setString:@"after"];
  [item setObject:@"more" forKey:@"com.example.b"];
  [items removeAllObjects];
  EXPECT_TRUE([[general items] isEqual:(@[ @{@"com.example.a" : @[ @"before" ]} ])]);
}

TEST_F(Pasteboard, AddsItemsBehindThoseThatAreThere) {
  [general setItems:@[ @{@"t" : @"1"} ]];
  [general addItems:@[ @{@"t" : @"2"}, @{@"t" : @"3"} ]];
  EXPECT_TRUE([[general items] isEqual:(@[ @{@"t" : @"1"}, @{@"t" : @"2"}, @{@"t" : @"3"} ])]);
}

TEST_F(Pasteboard, IsEmptiedByNoItems) {
  [general setString:@"text"];
  [general setItems:@[]];
  EXPECT_EQ([general numberOfItems], 0);
  [general setString:@"text"];
  [general setItems:nil];
  EXPECT_EQ([general numberOfItems], 0);
  [general setString:@"text"];
  [general setString:nil];
  EXPECT_EQ([general numberOfItems], 0);
}

TEST_F(Pasteboard, CountsEveryChange) {
  [general setString:@"a"];
  [general setString:@"a"];
  [general addItems:@[]];
  [general setItems:nil];
  EXPECT_EQ([general changeCount], 4);
}

TEST_F(Pasteboard, RefusesWhatIsNoItemAndStaysAsItIs) {
  expectRefused((id) @"text", "items that are no array");
  expectRefused((@[ @{@"t" : @"good"}, @"bad" ]), "an item that is no dictionary");
  expectRefused(@[ @{@"t" : [NSNull null]} ], "a value of class NSNull for the type t");
  expectRefused(@[ @{
                  @"t" : @[ @[ [[[NSObject alloc] init] autorelease] ] ]
                } ],
                "a value of class NSObject for the type t");
  expectRefused(@[ @{[NSNumber numberWithInt:1] : @"a"} ], "a type that is no text");
  expectRefused(@[ @{
                  @"t" : @{[NSNumber numberWithInt:1] : @"a"}
                } ],
                "a dictionary with a key that is no string for the type t");
}

TEST_F(Pasteboard, RefusesAValueThatIsNestedTooDeep) {
  NSArray *nested = @[];
  for (int depth = 0; depth < 100; ++depth)
    nested = @[ nested ];
  expectRoundTrip(nested);
  for (int depth = 0; depth < 1000; ++depth)
    nested = @[ nested ];
  expectRefused(@[ @{@"t" : nested} ], "a value that is nested too deep for the type t");
}

// MARK: Types, data and values

TEST_F(Pasteboard, TellsTheTypesOfItsFirstItem) {
  [general setItems:@[ @{@"a" : @"1", @"b" : @"2"}, @{@"c" : @"3"} ]];
  EXPECT_TRUE([[NSSet setWithArray:[general pasteboardTypes]] isEqual:([NSSet setWithObjects:@"a", @"b", nil])]);
  EXPECT_EQ([general containsPasteboardTypes:(@[ @"x", @"b" ])], YES);
  EXPECT_EQ([general containsPasteboardTypes:@[ @"c" ]], NO);
  EXPECT_EQ([general containsPasteboardTypes:@[]], NO);
}

TEST_F(Pasteboard, TellsWhatSeveralItemsHold) {
  [general setItems:@[ @{@"a" : @"1"}, @{@"b" : @"2"}, @{@"a" : @"3", @"b" : @"4"} ]];
  NSMutableIndexSet *const lastAndBeyond = [NSMutableIndexSet indexSetWithIndex:2];
  [lastAndBeyond addIndex:9];
  EXPECT_TRUE([[general valuesForPasteboardType:@"a" inItemSet:nil] isEqual:(@[ @"1", @"3" ])]);
  EXPECT_TRUE([[general valuesForPasteboardType:@"a" inItemSet:lastAndBeyond] isEqual:@[ @"3" ]]);
  EXPECT_TRUE([[general dataForPasteboardType:@"b" inItemSet:nil]
      isEqual:(@[ [NSData dataWithBytes:"2" length:1], [NSData dataWithBytes:"4" length:1] ])]);
  EXPECT_TRUE([[general itemSetWithPasteboardTypes:@[ @"b" ]]
      isEqual:[NSIndexSet indexSetWithIndexesInRange:NSMakeRange(1, 2)]]);
  EXPECT_EQ([general containsPasteboardTypes:@[ @"b" ] inItemSet:[NSIndexSet indexSetWithIndex:0]], NO);
  EXPECT_EQ([general containsPasteboardTypes:@[ @"b" ] inItemSet:nil], YES);
  EXPECT_EQ([[general pasteboardTypesForItemSet:nil] count], 3u);
  EXPECT_TRUE([[[general pasteboardTypesForItemSet:nil] objectAtIndex:1] isEqual:@[ @"b" ]]);
}

TEST_F(Pasteboard, GivesAValuesData) {
  NSData *const bytes = [NSData dataWithBytes:"\0\1" length:2];
  [general setItems:@[ @{
             @"text" : @"\u00e9",
             @"url" : [NSURL URLWithString:@"scheme:rest"],
             @"data" : bytes,
             @"list" : @[ @"a" ],
             @"with url" : @[ [NSURL URLWithString:@"scheme:rest"] ],
           } ]];
  EXPECT_TRUE([[general dataForPasteboardType:@"text"] isEqual:[NSData dataWithBytes:"\xc3\xa9" length:2]]);
  EXPECT_TRUE([[general dataForPasteboardType:@"url"] isEqual:[NSData dataWithBytes:"scheme:rest" length:11]]);
  EXPECT_TRUE([[general dataForPasteboardType:@"data"] isEqual:bytes]);
  EXPECT_TRUE([[NSPropertyListSerialization propertyListWithData:[general dataForPasteboardType:@"list"] options:0
                                                          format:NULL
                                                           error:NULL] isEqual:@[ @"a" ]]);
  EXPECT_EQ([general dataForPasteboardType:@"with url"], nil);
  EXPECT_EQ([general dataForPasteboardType:@"absent"], nil);
}

TEST_F(Pasteboard, ReadsDataUnderATypeForTextsOrURLsAsSuch) {
  NSData *const text = [NSData dataWithBytes:"scheme:\xc3\xa9" length:9];
  NSData *const url = [NSData dataWithBytes:"scheme:rest" length:11];
  NSData *const neither = [NSData dataWithBytes:"\xff" length:1];
  [general setItems:@[
    @{@"public.text" : text, @"public.url" : url, @"com.example.a" : text},
    @{@"public.text" : neither},
  ]];
  EXPECT_TRUE([[general valueForPasteboardType:@"public.text"] isEqual:@"scheme:\u00e9"]);
  EXPECT_TRUE([[general valueForPasteboardType:@"public.url"] isEqual:[NSURL URLWithString:@"scheme:rest"]]);
  EXPECT_TRUE([[general valueForPasteboardType:@"com.example.a"] isEqual:text]);
  EXPECT_TRUE([[general strings] isEqual:@[ @"scheme:\u00e9" ]]);
  EXPECT_TRUE([[[general valuesForPasteboardType:@"public.text" inItemSet:nil] lastObject] isEqual:neither]);
}

TEST_F(Pasteboard, HoldsOneItemAfterAValueOrDataWereSet) {
  [general setItems:@[ @{@"a" : @"1"}, @{@"b" : @"2"} ]];
  [general setValue:@[ @"list" ] forPasteboardType:@"com.example.list"];
  EXPECT_TRUE([[general items] isEqual:(@[ @{@"com.example.list" : @[ @"list" ]} ])]);
  NSData *const bytes = [NSData dataWithBytes:"x" length:1];
  [general setData:bytes forPasteboardType:@"com.example.data"];
  EXPECT_TRUE([[general items] isEqual:(@[ @{@"com.example.data" : bytes} ])]);
  [general setData:nil forPasteboardType:@"com.example.data"];
  EXPECT_EQ([general numberOfItems], 0);
}

TEST_F(Pasteboard, TakesStringsAndURLs) {
  [general setString:@"text"];
  EXPECT_TRUE([[general items] isEqual:(@[ @{@"public.utf8-plain-text" : @"text"} ])]);
  EXPECT_TRUE([[general string] isEqual:@"text"] && [general hasStrings] && ![general hasURLs]);

  NSURL *const url = [NSURL URLWithString:@"https://example.com"];
  [general setURL:url];
  EXPECT_TRUE([[general items] isEqual:(@[ @{@"public.url" : url} ])]);
  EXPECT_TRUE([[general URL] isEqual:url] && ![general hasStrings] && [general hasURLs]);

  [general setStrings:@[ @"a", @"b" ]];
  EXPECT_TRUE([[general strings] isEqual:(@[ @"a", @"b" ])]);
  EXPECT_TRUE([[general string] isEqual:@"a"]);
  EXPECT_EQ([general numberOfItems], 2);

  [general setURLs:@[ url, url ]];
  EXPECT_TRUE([[general URLs] isEqual:(@[ url, url ])]);

  // The first item alone has a say in what the pasteboard's string is.
  [general setItems:@[ @{@"com.example.a" : @"a"}, @{@"public.text" : @"b"} ]];
  EXPECT_EQ([general string], nil);
  EXPECT_TRUE([[general strings] isEqual:@[ @"b" ]]);
}

// MARK: Notifications

TEST_F(Pasteboard, TellsOfAChangeAtOnceAndWhichTypesCameAndWent) {
  [general setItems:@[ @{@"a" : @"1", @"b" : @"2"} ]];
  ASSERT_EQ([watcher->notifications count], 1u);
  EXPECT_TRUE([[[watcher->notifications lastObject] name] isEqual:UIPasteboardChangedNotification]);
  EXPECT_EQ([[watcher->notifications lastObject] object], general);
  EXPECT_TRUE(
      [typesUnder(UIPasteboardChangedTypesAddedKey, lastInfo()) isEqual:([NSSet setWithObjects:@"a", @"b", nil])]);
  EXPECT_TRUE([[lastInfo() objectForKey:UIPasteboardChangedTypesRemovedKey] isEqual:@[]]);

  [general setItems:@[ @{@"b" : @"3"}, @{@"c" : @"4"} ]];
  ASSERT_EQ([watcher->notifications count], 2u);
  EXPECT_TRUE([[lastInfo() objectForKey:UIPasteboardChangedTypesAddedKey] isEqual:@[ @"c" ]]);
  EXPECT_TRUE([[lastInfo() objectForKey:UIPasteboardChangedTypesRemovedKey] isEqual:@[ @"a" ]]);
  EXPECT_TRUE(watcher->allOnMainThread);
}

TEST_F(Pasteboard, HasChangedAlreadyWhenItTells) {
  __block NSInteger seen = -1;
  watcher->whenChanged = [[^{
    seen = [general numberOfItems];
  } copy] autorelease];
  [general setStrings:@[ @"a", @"b" ]];
  EXPECT_EQ(seen, 2);
}

TEST_F(Pasteboard, MayBeChangedByWhoIsTold) {
  __block int rounds = 0;
  watcher->whenChanged = [[^{
    if (++rounds < 3) [general addItems:@[ @{@"t" : @"more"} ]];
  } copy] autorelease];
  [general setString:@"a"];
  EXPECT_EQ([general numberOfItems], 3);
  EXPECT_EQ([general changeCount], 3);
}

TEST_F(Pasteboard, TellsOnTheMainThreadOfAChangeOnAnother) {
  std::thread([this] {
    GSRegisterCurrentThread();
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    [general setString:@"from elsewhere"];
    [pool release];
    GSUnregisterCurrentThread();
  }).join();
  EXPECT_EQ([watcher->notifications count], 0u);
  EXPECT_TRUE([[general string] isEqual:@"from elsewhere"]);
  NSDate *const limit = [NSDate dateWithTimeIntervalSinceNow:20];
  while ([watcher->notifications count] == 0 && [limit timeIntervalSinceNow] > 0)
    [[NSRunLoop currentRunLoop] runMode:NSDefaultRunLoopMode beforeDate:[NSDate dateWithTimeIntervalSinceNow:0.01]];
  EXPECT_EQ([watcher->notifications count], 1u);
  EXPECT_TRUE(watcher->allOnMainThread);
}

TEST_F(Pasteboard, TellsNothingNewWhenTheAppBecomesActiveAndNobodyElseHasChangedIt) {
  [general setString:@"a"];
  [[NSNotificationCenter defaultCenter] postNotificationName:UIApplicationDidBecomeActiveNotification object:nil];
  EXPECT_EQ([watcher->notifications count], 1u);
}

// MARK: Names

TEST_F(Pasteboard, WithANameIsMadeOnlyOnDemandAndThenAlwaysTheSame) {
  EXPECT_EQ([UIPasteboard pasteboardWithName:@"mine" create:NO], nil);
  UIPasteboard *const mine = [UIPasteboard pasteboardWithName:@"mine" create:YES];
  ASSERT_NE(mine, nil);
  EXPECT_EQ([UIPasteboard pasteboardWithName:@"mine" create:NO], mine);
  EXPECT_EQ([UIPasteboard pasteboardWithName:@"mine" create:YES], mine);
  EXPECT_TRUE([[mine name] isEqual:@"mine"]);
  EXPECT_EQ([UIPasteboard pasteboardWithName:nil create:YES], nil);
}

TEST_F(Pasteboard, WithAUniqueNameIsAnotherEachTime) {
  UIPasteboard *const one = [UIPasteboard pasteboardWithUniqueName];
  UIPasteboard *const other = [UIPasteboard pasteboardWithUniqueName];
  EXPECT_FALSE([[one name] isEqual:[other name]]);
  EXPECT_EQ([UIPasteboard pasteboardWithName:[one name] create:NO], one);
}

TEST_F(Pasteboard, WithANameHasItsOwnItemsCountAndNotifications) {
  UIPasteboard *const mine = [UIPasteboard pasteboardWithName:@"mine" create:YES];
  UIPasteboard *const other = [UIPasteboard pasteboardWithName:@"other" create:YES];
  [general setString:@"general"];
  [mine setString:@"mine"];
  [mine addItems:@[ @{@"t" : @"more"} ]];
  EXPECT_EQ([[watcher->notifications lastObject] object], mine);
  EXPECT_TRUE([[general string] isEqual:@"general"] && [[mine string] isEqual:@"mine"] && ![other string]);
  EXPECT_EQ([general changeCount], 1);
  EXPECT_EQ([mine changeCount], 2);
  EXPECT_EQ([other changeCount], 0);
}

TEST_F(Pasteboard, WithANameTellsBeforeItIsRemovedAndHoldsNothingAfterwards) {
  UIPasteboard *const mine = [UIPasteboard pasteboardWithName:@"mine" create:YES];
  [mine setString:@"mine"];
  __block NSInteger held = -1;
  watcher->whenChanged = [[^{
    held = [mine numberOfItems];
  } copy] autorelease];
  [UIPasteboard removePasteboardWithName:@"mine"];
  ASSERT_EQ([watcher->notifications count], 2u);
  EXPECT_TRUE([[[watcher->notifications lastObject] name] isEqual:UIPasteboardRemovedNotification]);
  EXPECT_EQ([[watcher->notifications lastObject] object], mine);
  EXPECT_EQ(held, 1);
  EXPECT_EQ([mine numberOfItems], 0);
  [mine setString:@"too late"];
  EXPECT_EQ([mine numberOfItems], 0);
  EXPECT_EQ([watcher->notifications count], 2u);

  EXPECT_EQ([UIPasteboard pasteboardWithName:@"mine" create:NO], nil);
  UIPasteboard *const successor = [UIPasteboard pasteboardWithName:@"mine" create:YES];
  EXPECT_NE(successor, mine);
  EXPECT_EQ([successor numberOfItems], 0);
}

TEST_F(Pasteboard, OfTheDeviceCannotBeRemoved) {
  [general setString:@"stays"];
  [UIPasteboard removePasteboardWithName:UIPasteboardNameGeneral];
  [UIPasteboard removePasteboardWithName:@"unknown"];
  [UIPasteboard removePasteboardWithName:nil];
  EXPECT_TRUE([[general string] isEqual:@"stays"]);
  EXPECT_EQ([watcher->notifications count], 1u);
}
