#pragma once

#import <Foundation/Foundation.h>

@class NSManagedObjectModel, NSPersistentStore;

GS_EXPORT NSString *const NSSQLiteStoreType;
GS_EXPORT NSString *const NSBinaryStoreType;
GS_EXPORT NSString *const NSInMemoryStoreType;

GS_EXPORT NSString *const NSPersistentStoreFileProtectionKey;
GS_EXPORT NSString *const NSReadOnlyPersistentStoreOption;
GS_EXPORT NSString *const NSMigratePersistentStoresAutomaticallyOption;
GS_EXPORT NSString *const NSInferMappingModelAutomaticallyOption;
GS_EXPORT NSString *const NSSQLitePragmasOption;

GS_EXPORT NSString *const NSStoreTypeKey;
GS_EXPORT NSString *const NSStoreUUIDKey;

@interface NSPersistentStoreCoordinator : NSObject {
@private
  NSManagedObjectModel *_managedObjectModel;
  NSMutableArray *_persistentStores;
}

- (instancetype)initWithManagedObjectModel:(NSManagedObjectModel *)model;

@property (readonly, retain) NSManagedObjectModel *managedObjectModel;
@property (readonly) NSArray *persistentStores;

- (NSPersistentStore *)addPersistentStoreWithType:(NSString *)storeType
                                    configuration:(NSString *)configuration
                                              URL:(NSURL *)storeURL
                                          options:(NSDictionary *)options
                                            error:(NSError **)error;
- (BOOL)removePersistentStore:(NSPersistentStore *)store error:(NSError **)error;
- (NSPersistentStore *)persistentStoreForURL:(NSURL *)url;

@end
