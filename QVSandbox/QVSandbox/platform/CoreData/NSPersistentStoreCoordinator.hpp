#pragma once

#include "../Foundation/NSString.hpp"

extern "C" objc_object* qvsbPersistentStoreFileProtectionKey QVSB_SYMBOL(NSPersistentStoreFileProtectionKey);

namespace qvsb {

inline NSString NSPersistentStoreFileProtectionKey() { return NSString(qvsbPersistentStoreFileProtectionKey); }

class NSPersistentStore : public NSObject {
  QVSB_HANDLE(NSPersistentStore, NSObject)
};

class NSPersistentStoreCoordinator : public NSObject {
  QVSB_HANDLE(NSPersistentStoreCoordinator, NSObject)
};

} // namespace qvsb
