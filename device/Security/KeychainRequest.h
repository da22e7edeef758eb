// One call of the keychain's interface, read from the dictionaries that it was given.
#pragma once

#import <Foundation/Foundation.h>
#import <Security/Security.h>

#include "Security/KeychainDatabase.h"

namespace qvdevice {

// What kind of call a dictionary belongs to decides which keys it may have.
enum class Dictionary { itemToAdd, itemsToFind, itemsToUpdate, itemsToDelete, update };

struct KeychainRequest {
  // Of an update: null.
  const ItemClass *itemClass = nullptr;
  Values values;
  std::optional<std::int64_t> row;
  bool caseInsensitive = false;
  bool anySynchronizable = false;
  bool one = true; // a single answer, no array
  std::int64_t limit = 1;
  bool returnsData = false, returnsAttributes = false, returnsReference = false, returnsPersistentReference = false;

  // For the update of items of a class, `itemClass` is given.
  OSStatus read(NSDictionary *dictionary, Dictionary kind, const ItemClass *itemClass = nullptr);

  // Whose items an app adds and sees: its own, by its bundle identifier.
  static NSString *accessGroup();

  bool has(std::string_view column) const;
  Conditions conditions() const;

private:
  OSStatus readClass(NSDictionary *dictionary, Dictionary kind);
  OSStatus readEntry(const std::string &key, id value, Dictionary kind);
  OSStatus readReturn(const std::string &key, id value, Dictionary kind);
  OSStatus readLimit(id value, Dictionary kind);
  OSStatus readAttribute(const Attribute &attribute, id value, Dictionary kind);
};

// An item's name that stays the same: four letters of its class and the number of its row.
NSData *persistentReference(const Item &item);

// The reverse; false when it is no such thing.
bool readPersistentReference(id reference, const ItemClass *&itemClass, std::int64_t &row);

} // namespace qvdevice

// What kSecReturnRef answers, for kSecValueRef to be given.
@interface QVDeviceKeychainItem : NSObject {
@private
  NSData *_persistentReference;
}
- (instancetype)initWithPersistentReference:(NSData *)reference;
- (NSData *)persistentReference;
@end
