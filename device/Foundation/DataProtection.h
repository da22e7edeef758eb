// The protection class of an item, as the file system keeps it.
#pragma once

#import <Foundation/Foundation.h>

namespace qvdevice {

// The constant for a class named so, or nil when there is no such class.
NSFileProtectionType protectionNamed(id name);

// The class that NSDataWritingOptions ask for; nil when they ask for none.
NSFileProtectionType protectionInOptions(NSUInteger options);

// What an item without a class of its own has on this device; nil when such an item has none at all.
NSFileProtectionType defaultProtection();

// The item's own class, nil when it has none. A link has no contents: its class is that of the item it leads to.
NSFileProtectionType storedProtection(const char *path);

// Stores the class and traces the change. Storing the class that the item already has does nothing. Answers 0 or an
// errno.
int storeProtection(const char *path, NSFileProtectionType protection);

// The same for a file that is being written and will only later stand at its path. Nothing is traced.
int storeProtection(int descriptor, NSFileProtectionType protection);

void traceProtection(const char *path, NSFileProtectionType from, NSFileProtectionType to);

} // namespace qvdevice
