// The files of persistent stores.
#pragma once

#import <CoreData/CoreData.h>

namespace qvdevice {

// Each opens the store's file, or makes it, and answers the store's identifier; nil with an error when that cannot be
// done.
NSString *openSQLiteStore(NSString *path, bool readOnly, NSFileProtectionType protection, NSError **error);
NSString *openBinaryStore(NSString *path, bool readOnly, NSFileProtectionType protection, NSError **error);

} // namespace qvdevice
