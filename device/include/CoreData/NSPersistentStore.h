#pragma once

#import <Foundation/Foundation.h>

@class NSPersistentStoreCoordinator;

@interface NSPersistentStore : NSObject {
@private
  NSPersistentStoreCoordinator *_coordinator;
  NSString *_type;
  NSString *_configurationName;
  NSURL *_URL;
  NSDictionary *_options;
  NSString *_identifier;
}

@property (nonatomic, readonly, assign) NSPersistentStoreCoordinator *persistentStoreCoordinator;
@property (readonly, copy) NSString *type;
@property (readonly, copy) NSString *configurationName;
@property (readonly, retain) NSDictionary *options;
@property (nonatomic, retain) NSURL *URL;
@property (nonatomic, copy) NSString *identifier;
@property (nonatomic, readonly, getter=isReadOnly) BOOL readOnly;

@end
