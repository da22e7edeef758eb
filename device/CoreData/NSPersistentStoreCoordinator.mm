#import <CoreData/CoreData.h>

#import "Foundation/DataProtection.h"
#import "Foundation/FileErrors.h"
#import "NSPersistentStoreInternal.h"
#import "StoreFiles.h"

NSString *const NSSQLiteStoreType = @"SQLite";
NSString *const NSBinaryStoreType = @"Binary";
NSString *const NSInMemoryStoreType = @"InMemory";

NSString *const NSPersistentStoreFileProtectionKey = @"NSPersistentStoreFileProtectionKey";
NSString *const NSReadOnlyPersistentStoreOption = @"NSReadOnlyPersistentStoreOption";
NSString *const NSMigratePersistentStoresAutomaticallyOption = @"NSMigratePersistentStoresAutomaticallyOption";
NSString *const NSInferMappingModelAutomaticallyOption = @"NSInferMappingModelAutomaticallyOption";
NSString *const NSSQLitePragmasOption = @"NSSQLitePragmasOption";

NSString *const NSStoreTypeKey = @"NSStoreType";
NSString *const NSStoreUUIDKey = @"NSStoreUUID";

using namespace qvdevice;

@implementation NSPersistentStoreCoordinator

- (instancetype)initWithManagedObjectModel:(NSManagedObjectModel *)model {
  if (!model) {
    [self release];
    [NSException raise:NSInvalidArgumentException
                format:@"Cannot create an NSPersistentStoreCoordinator with a nil model"];
  }
  if ((self = [super init])) {
    _managedObjectModel = [model retain];
    _persistentStores = [[NSMutableArray alloc] init];
  }
  return self;
}

- (void)dealloc {
  for (NSPersistentStore *store in _persistentStores)
    [store qvdevice_leaveCoordinator];
  [_persistentStores release];
  [_managedObjectModel release];
  [super dealloc];
}

@synthesize managedObjectModel = _managedObjectModel;

- (NSArray *)persistentStores {
  @synchronized(self) {
    return [[_persistentStores copy] autorelease];
  }
}

- (NSPersistentStore *)addPersistentStoreWithType:(NSString *)storeType
                                    configuration:(NSString *)configuration
                                              URL:(NSURL *)storeURL
                                          options:(NSDictionary *)options
                                            error:(NSError **)error {
  const bool inMemory = [storeType isEqualToString:NSInMemoryStoreType];
  const bool sqlite = [storeType isEqualToString:NSSQLiteStoreType];
  if (!inMemory && !sqlite && ![storeType isEqualToString:NSBinaryStoreType]) {
    failed(error, NSPersistentStoreInvalidTypeError, @"The persistent store type is not known.",
           storeType ? @{NSStoreTypeKey : storeType} : nil);
    return nil;
  }
  if (!inMemory && ![storeURL isFileURL]) {
    failed(error, NSPersistentStoreOpenError, @"The persistent store needs the URL of a file.",
           storeURL ? @{NSURLErrorKey : storeURL} : nil);
    return nil;
  }
  // Without a word in the options a store can be read from the first unlocking on.
  id const className = [options objectForKey:NSPersistentStoreFileProtectionKey];
  NSFileProtectionType const protection =
      className ? protectionNamed(className) : NSFileProtectionCompleteUntilFirstUserAuthentication;
  if (!protection) {
    failed(error, NSPersistentStoreOpenError, @"The persistent store’s file protection class is not known.",
           @{NSPersistentStoreFileProtectionKey : className});
    return nil;
  }
  const bool readOnly = [[options objectForKey:NSReadOnlyPersistentStoreOption] boolValue];
  NSString *identifier = [[NSUUID UUID] UUIDString];
  if (sqlite)
    identifier = openSQLiteStore([storeURL path], readOnly, protection, error);
  else if (!inMemory)
    identifier = openBinaryStore([storeURL path], readOnly, protection, error);
  if (!identifier) return nil;

  NSPersistentStore *const store = [[[NSPersistentStore alloc] qvdevice_initWithCoordinator:self type:storeType
                                                                              configuration:configuration
                                                                                        URL:storeURL
                                                                                    options:options
                                                                                 identifier:identifier] autorelease];
  @synchronized(self) {
    [_persistentStores addObject:store];
  }
  return store;
}

- (BOOL)removePersistentStore:(NSPersistentStore *)store error:(NSError **)error {
  @synchronized(self) {
    if (store && [_persistentStores indexOfObjectIdenticalTo:store] != NSNotFound) {
      [store qvdevice_leaveCoordinator];
      [_persistentStores removeObjectIdenticalTo:store];
      return YES;
    }
  }
  return failed(error, NSPersistentStoreOperationError, @"The persistent store does not belong to this coordinator.",
                nil);
}

- (NSPersistentStore *)persistentStoreForURL:(NSURL *)url {
  for (NSPersistentStore *store in [self persistentStores])
    if ([[store URL] isEqual:url]) return store;
  return nil;
}

@end
