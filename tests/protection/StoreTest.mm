#include "Protection.h"

namespace {

class Store : public Protection {
protected:
  NSPersistentStoreCoordinator *coordinator() {
    NSManagedObjectModel *model = [[[NSManagedObjectModel alloc] init] autorelease];
    return [[[NSPersistentStoreCoordinator alloc] initWithManagedObjectModel:model] autorelease];
  }
  NSPersistentStore *add(NSDictionary *options) {
    return [coordinator() addPersistentStoreWithType:NSSQLiteStoreType configuration:nil URL:url(@"store.sqlite")
                                             options:options
                                               error:NULL];
  }
};

} // namespace

TEST_F(Store, OptionsWithNoProtectionReachThePlatformRaisedInACopy) {
  NSMutableDictionary *options = [NSMutableDictionary
      dictionaryWithObjectsAndKeys:NSFileProtectionNone, NSPersistentStoreFileProtectionKey, @"value", @"another", nil];
  NSPersistentStore *store = add(options);
  ASSERT_NE(store, nil);
  EXPECT_NE([store options], options);
  EXPECT_EQ(support::text([[store options] objectForKey:@"NSPersistentStoreFileProtectionKey"]), kRaised);
  EXPECT_EQ(support::text([[store options] objectForKey:@"another"]), "value");
  EXPECT_EQ(support::text([options objectForKey:@"NSPersistentStoreFileProtectionKey"]), kNone);
  EXPECT_EQ(classOf(@"store.sqlite"), kRaised);
}

TEST_F(Store, TheClassNoneIsRecognisedByItsText) {
  NSString *const none = [NSMutableString stringWithFormat:@"NSFileProtection%@", @"None"];
  NSPersistentStore *store = add(@{@"NSPersistentStoreFileProtectionKey" : none});
  EXPECT_EQ(support::text([[store options] objectForKey:@"NSPersistentStoreFileProtectionKey"]), kRaised);
}

TEST_F(Store, OptionsWithoutTheKeyReachThePlatformUnchanged) {
  NSDictionary *options = @{@"another" : @"value"};
  NSPersistentStore *store = add(options);
  ASSERT_NE(store, nil);
  EXPECT_EQ([store options], options); // the very dictionary
  EXPECT_EQ([[store options] objectForKey:@"NSPersistentStoreFileProtectionKey"], nil);
}

TEST_F(Store, OptionsWithAnotherClassReachThePlatformUnchanged) {
  NSPersistentStore *store = add(@{NSPersistentStoreFileProtectionKey : NSFileProtectionComplete});
  ASSERT_NE(store, nil);
  EXPECT_EQ(support::text([[store options] objectForKey:@"NSPersistentStoreFileProtectionKey"]), kComplete);
  EXPECT_EQ(classOf(@"store.sqlite"), kComplete);
}

TEST_F(Store, NoOptionsReachThePlatformAsNone) {
  NSPersistentStore *store = add(nil);
  ASSERT_NE(store, nil);
  EXPECT_EQ([store options], nil);
}

TEST_F(Store, AnOptionThatIsNoStringIsNotTouchedAndDoesNotRaise) {
  NSDictionary *options = @{@"NSPersistentStoreFileProtectionKey" : @7};
  EXPECT_NO_THROW(add(options));
}

TEST_F(Store, ThatThePlatformRefusesGivesNilAndItsError) {
  NSError *error = nil;
  NSPersistentStore *store = [coordinator() addPersistentStoreWithType:NSSQLiteStoreType configuration:nil
                                                                   URL:impossibleURL()
                                                               options:nil
                                                                 error:&error];
  EXPECT_EQ(store, nil);
  EXPECT_NE(error, nil);
  EXPECT_TRUE(support::log().empty());
}
