#import "Pooled.h"

#include <objc/runtime.h>

#include <thread>

namespace {

class ItemProvider : public Pooled {
protected:
  NSItemProvider *provider(id item, NSString *type) {
    return [[[NSItemProvider alloc] initWithItem:item typeIdentifier:type] autorelease];
  }

  // What loading gives; kept until the end of the test.
  void load(NSItemProvider *from, NSString *type) {
    dispatch_semaphore_t const done = dispatch_semaphore_create(0);
    [from loadItemForTypeIdentifier:type options:nil completionHandler:^(id item, NSError *error) {
      loaded_ = [item retain];
      error_ = [error retain];
      thread_ = std::this_thread::get_id();
      dispatch_semaphore_signal(done);
    }];
    EXPECT_EQ(dispatch_semaphore_wait(done, dispatch_time(DISPATCH_TIME_NOW, 20 * NSEC_PER_SEC)), 0);
    dispatch_release(done);
    [loaded_ autorelease];
    [error_ autorelease];
  }

  id loaded_ = nil;
  NSError *error_ = nil;
  std::thread::id thread_;
};

TEST_F(ItemProvider, RegistersTheTypeOfItsItem) {
  EXPECT_EQ(text([provider(@"item", @"com.example.data") registeredTypeIdentifiers]), text(@[ @"com.example.data" ]));
}

TEST_F(ItemProvider, WithoutAnItemRegistersNothing) {
  NSItemProvider *const empty = provider(nil, @"com.example.data");
  EXPECT_EQ([[empty registeredTypeIdentifiers] count], 0u);
  EXPECT_FALSE([empty hasItemConformingToTypeIdentifier:@"com.example.data"]);
}

TEST_F(ItemProvider, MadeWithoutAnythingRegistersNothing) {
  NSItemProvider *const empty = [[[NSItemProvider alloc] init] autorelease];
  ASSERT_NE(empty, nil);
  EXPECT_EQ([[empty registeredTypeIdentifiers] count], 0u);
}

TEST_F(ItemProvider, WithoutATypeIsRefused) {
  NSString *name = nil;
  @try {
    provider(@"item", nil);
  } @catch (NSException *exception) {
    name = [exception name];
  }
  EXPECT_EQ(text(name), text(NSInvalidArgumentException));
}

TEST_F(ItemProvider, KnowsItsTypeInAnyCaseAndNoOther) {
  NSItemProvider *const some = provider(@"item", @"com.example.Data");
  EXPECT_TRUE([some hasItemConformingToTypeIdentifier:@"com.example.data"]);
  EXPECT_FALSE([some hasItemConformingToTypeIdentifier:@"com.example.data2"]);
  EXPECT_FALSE([some hasItemConformingToTypeIdentifier:nil]);
}

TEST_F(ItemProvider, LoadsItsVeryItemOnAnotherThread) {
  NSMutableDictionary *const item = [NSMutableDictionary dictionaryWithObject:@"v" forKey:@"k"];
  load(provider(item, @"com.example.data"), @"com.example.data");
  EXPECT_EQ(loaded_, item);
  EXPECT_EQ(error_, nil);
  EXPECT_NE(thread_, std::this_thread::get_id());
}

TEST_F(ItemProvider, OfAnotherTypeGivesAnError) {
  load(provider(@"item", @"com.example.data"), @"com.example.other");
  EXPECT_EQ(loaded_, nil);
  EXPECT_EQ(text([error_ domain]), "NSItemProviderErrorDomain");
  EXPECT_EQ([error_ code], -1000);
}

TEST_F(ItemProvider, WithoutAHandlerLoadsNothing) {
  [provider(@"item", @"a.b") loadItemForTypeIdentifier:@"a.b" options:nil completionHandler:nil];
}

TEST_F(ItemProvider, GoesThroughAnArchiveWithItsItem) {
  NSItemProvider *const read = throughArchive(provider(@{@"FK" : @"v"}, @"com.example.data"));
  ASSERT_TRUE([read isKindOfClass:[NSItemProvider class]]);
  load(read, @"com.example.data");
  EXPECT_EQ(text([loaded_ objectForKey:@"FK"]), "v");
}

TEST_F(ItemProvider, BehavesInTheTypesOfThePlatform) {
  const Method load = class_getInstanceMethod([provider(@"item", @"a.b") class],
                                              @selector(loadItemForTypeIdentifier:options:completionHandler:));
  EXPECT_STREQ(method_getTypeEncoding(load), "v40@0:8@16@24@?32");
}

} // namespace
