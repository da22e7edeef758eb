#import "Files.h"
#import "Raised.h"

#import <CoreData/CoreData.h>

#include <cerrno>
#include <sqlite3.h>

namespace {

class PersistentStore : public Files {
protected:
  void SetUp() override {
    Files::SetUp();
    NSManagedObjectModel *const model = [[[NSManagedObjectModel alloc] init] autorelease];
    coordinator = [[[NSPersistentStoreCoordinator alloc] initWithManagedObjectModel:model] autorelease];
  }

  NSPersistentStore *add(NSString *type, NSURL *at, NSDictionary *options, NSError **error = NULL) {
    return [coordinator addPersistentStoreWithType:type configuration:nil URL:at options:options error:error];
  }

  NSPersistentStoreCoordinator *coordinator = nil;
};

TEST_F(PersistentStore, AnSQLiteStoreIsARealDatabase) {
  NSError *error = nil;
  NSPersistentStore *const store = add(NSSQLiteStoreType, url(@"s.sqlite"), nil, &error);
  ASSERT_NE(store, nil) << text([error localizedDescription]);
  sqlite3 *database = nullptr;
  ASSERT_EQ(sqlite3_open_v2([path(@"s.sqlite") UTF8String], &database, SQLITE_OPEN_READONLY, nullptr), SQLITE_OK);
  sqlite3_stmt *statement = nullptr;
  ASSERT_EQ(sqlite3_prepare_v2(database, "SELECT Z_UUID FROM Z_METADATA", -1, &statement, nullptr), SQLITE_OK);
  ASSERT_EQ(sqlite3_step(statement), SQLITE_ROW);
  EXPECT_STREQ(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0)), [[store identifier] UTF8String]);
  sqlite3_finalize(statement);
  sqlite3_close(database);
}

TEST_F(PersistentStore, AStoreKeepsWhatItWasAddedWith) {
  NSDictionary *const options = @{NSPersistentStoreFileProtectionKey : NSFileProtectionComplete, @"own" : @1};
  NSPersistentStore *const store = add(NSSQLiteStoreType, url(@"s.sqlite"), options);
  EXPECT_EQ([store options], options) << "the very dictionary";
  EXPECT_TRUE([[store URL] isEqual:url(@"s.sqlite")]);
  EXPECT_EQ(text([store type]), "SQLite");
  EXPECT_EQ([store persistentStoreCoordinator], coordinator);
  EXPECT_EQ([[coordinator persistentStores] count], 1u);
  EXPECT_EQ([coordinator persistentStoreForURL:url(@"s.sqlite")], store);
  EXPECT_EQ([add(NSInMemoryStoreType, nil, nil) options], nil);
}

TEST_F(PersistentStore, ItsFileGetsTheClassOfTheOptions) {
  for (NSString *type in @[ NSSQLiteStoreType, NSBinaryStoreType ])
    for (NSString *protection in
         @[ NSFileProtectionNone, NSFileProtectionComplete, NSFileProtectionCompleteUnlessOpen ]) {
      NSString *const name = [type stringByAppendingString:protection];
      EXPECT_NE(add(type, url(name), @{NSPersistentStoreFileProtectionKey : protection}), nil);
      EXPECT_EQ(stored(name), text(protection));
    }
}

TEST_F(PersistentStore, WithoutAClassInTheOptionsItsFileGetsThePlatformsDefault) {
  for (NSDictionary *options in @[ @{}, @{@"other" : @1} ])
    for (NSString *type in @[ NSSQLiteStoreType, NSBinaryStoreType ]) {
      NSString *const name = [NSString stringWithFormat:@"%@%lu", type, (unsigned long)[options count]];
      EXPECT_NE(add(type, url(name), options), nil);
      EXPECT_EQ(stored(name), "NSFileProtectionCompleteUntilFirstUserAuthentication");
    }
  EXPECT_NE(add(NSSQLiteStoreType, url(@"nil"), nil), nil);
  EXPECT_EQ(stored(@"nil"), "NSFileProtectionCompleteUntilFirstUserAuthentication");
}

TEST_F(PersistentStore, AddedAgainItHasTheSameIdentifier) {
  for (NSString *type in @[ NSSQLiteStoreType, NSBinaryStoreType ]) {
    NSString *const first = [add(type, url(type), nil) identifier];
    EXPECT_GT([first length], 0u);
    EXPECT_EQ(text([add(type, url(type), nil) identifier]), text(first));
  }
}

TEST_F(PersistentStore, AnUnknownTypeIsRefused) {
  NSString *const none = nil;
  for (NSString *type in @[ @"Cloud", @"" ]) {
    NSError *error = nil;
    EXPECT_EQ(add(type, url(@"s"), nil, &error), nil);
    EXPECT_EQ(text([error domain]), "NSCocoaErrorDomain");
    EXPECT_EQ([error code], 134000);
  }
  EXPECT_EQ(add(none, url(@"s"), nil, NULL), nil);
  EXPECT_EQ([names() count], 0u);
}

TEST_F(PersistentStore, APlaceThatCannotBeWrittenIsAnErrorAndNothingIsAdded) {
  for (NSString *type in @[ NSSQLiteStoreType, NSBinaryStoreType ])
    for (NSURL *place in @[
           url(@"no/s"), [NSURL fileURLWithPath:@"/usr/qvdevice-test"], [NSURL URLWithString:@"http://example.com/s"]
         ]) {
      NSError *error = nil;
      EXPECT_EQ(add(type, place, nil, &error), nil) << text([place absoluteString]);
      EXPECT_NE(error, nil);
      EXPECT_EQ(add(type, place, nil, NULL), nil);
    }
  NSURL *const none = nil;
  EXPECT_EQ(add(NSSQLiteStoreType, none, nil, NULL), nil);
  EXPECT_EQ([[coordinator persistentStores] count], 0u);
}

TEST_F(PersistentStore, AFileThatIsNoStoreIsRefusedAndLeftAsItIs) {
  make(@"text", "this is certainly not a store, and long enough to be looked at twice");
  for (NSString *type in @[ NSSQLiteStoreType, NSBinaryStoreType ]) {
    NSError *error = nil;
    EXPECT_EQ(add(type, url(@"text"), nil, &error), nil);
    EXPECT_EQ([error code], NSFileReadCorruptFileError);
  }
  EXPECT_EQ(contents(@"text").substr(0, 7), "this is");
  EXPECT_EQ(stored(@"text"), std::nullopt);
}

TEST_F(PersistentStore, AnUnknownProtectionClassIsRefused) {
  NSError *error = nil;
  EXPECT_EQ(add(NSSQLiteStoreType, url(@"s"), @{NSPersistentStoreFileProtectionKey : @"perhaps"}, &error), nil);
  EXPECT_NE(error, nil);
  EXPECT_EQ([names() count], 0u);
}

TEST_F(PersistentStore, AReadOnlyStoreMustExistAndIsNotChanged) {
  NSDictionary *const readOnly = @{NSReadOnlyPersistentStoreOption : @1};
  for (NSString *type in @[ NSSQLiteStoreType, NSBinaryStoreType ]) {
    EXPECT_EQ(add(type, url(type), readOnly), nil);
    EXPECT_NE(add(type, url(type), @{NSPersistentStoreFileProtectionKey : NSFileProtectionNone}), nil);
    NSPersistentStore *const store = add(type, url(type), readOnly);
    EXPECT_TRUE([store isReadOnly]);
    EXPECT_EQ(stored(type), "NSFileProtectionNone");
  }
}

TEST_F(PersistentStore, ARemovedStoreIsGoneAndItsFileStays) {
  NSPersistentStore *const store = add(NSSQLiteStoreType, url(@"s"), nil);
  EXPECT_TRUE([coordinator removePersistentStore:store error:NULL]);
  EXPECT_EQ([[coordinator persistentStores] count], 0u);
  EXPECT_EQ([store persistentStoreCoordinator], nil);
  EXPECT_EQ([names() count], 1u);
  NSError *error = nil;
  EXPECT_FALSE([coordinator removePersistentStore:store error:&error]);
  EXPECT_NE(error, nil);
  NSPersistentStore *const none = nil;
  EXPECT_FALSE([coordinator removePersistentStore:none error:NULL]);
}

TEST_F(PersistentStore, ACoordinatorNeedsAModel) {
  NSManagedObjectModel *const none = nil;
  EXPECT_EQ(raisedBy([&] { [[NSPersistentStoreCoordinator alloc] initWithManagedObjectModel:none]; }),
            "NSInvalidArgumentException");
}

TEST_F(PersistentStore, TheOptionsKeysAreSpelledAsThePlatformSpellsThem) {
  EXPECT_EQ(text(NSPersistentStoreFileProtectionKey), "NSPersistentStoreFileProtectionKey");
  EXPECT_EQ(text(NSBinaryStoreType), "Binary");
  EXPECT_EQ(text(NSInMemoryStoreType), "InMemory");
}

} // namespace
