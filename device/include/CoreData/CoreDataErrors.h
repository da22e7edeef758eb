#pragma once

#import <Foundation/Foundation.h>

enum : NSInteger {
  NSPersistentStoreInvalidTypeError = 134000,
  NSPersistentStoreTypeMismatchError = 134010,
  NSPersistentStoreIncompatibleSchemaError = 134020,
  NSPersistentStoreSaveError = 134030,
  NSPersistentStoreOperationError = 134070,
  NSPersistentStoreOpenError = 134080,
};
