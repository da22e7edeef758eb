#import "StoreFiles.h"

#import "Foundation/DataProtection.h"
#import "Foundation/FileErrors.h"
#import "Foundation/FilePath.h"
#import "Foundation/FileWriting.h"

#include <memory>
#include <sqlite3.h>
#include <string>

namespace qvdevice {
namespace {

struct Closes {
  void operator()(sqlite3 *database) const { sqlite3_close(database); }
};
using Database = std::unique_ptr<sqlite3, Closes>;

NSString *failedOpening(NSError **error, NSString *path, int sqlite) {
  NSInteger code = NSPersistentStoreOpenError;
  switch (sqlite & 0xff) {
  case SQLITE_CANTOPEN:
  case SQLITE_READONLY:
    code = NSFileReadUnknownError;
    break;
  case SQLITE_NOTADB:
  case SQLITE_CORRUPT:
    code = NSFileReadCorruptFileError;
    break;
  default:
    break;
  }
  failed(
      error, code, [NSString stringWithFormat:@"The file “%@” couldn’t be opened.", [path lastPathComponent]],
      @{NSFilePathErrorKey : path,
        @"NSSQLiteErrorDomain" : @(sqlite)});
  return nil;
}

int query(sqlite3 *database, const char *statement, std::string &answer) {
  return sqlite3_exec(
      database, statement, [](void *into, int columns, char **values, char **) {
        if (columns > 0 && values[0]) *static_cast<std::string *>(into) = values[0];
        return 0;
      }, &answer, nullptr);
}

// The table in which a store keeps what it is, beside the app's own tables.
int identify(sqlite3 *database, bool readOnly, std::string &identifier) {
  if (!readOnly) {
    std::string ignored;
    const int made = query(database,
                           "CREATE TABLE IF NOT EXISTS Z_METADATA "
                           "(Z_VERSION INTEGER PRIMARY KEY, Z_UUID VARCHAR(255), Z_PLIST BLOB)",
                           ignored);
    if (made != SQLITE_OK) return made;
    const std::string fresh = [[[NSUUID UUID] UUIDString] UTF8String];
    const std::string insert = "INSERT OR IGNORE INTO Z_METADATA VALUES (1, '" + fresh + "', NULL)";
    const int inserted = query(database, insert.c_str(), ignored);
    if (inserted != SQLITE_OK) return inserted;
  }
  return query(database, "SELECT Z_UUID FROM Z_METADATA WHERE Z_VERSION = 1", identifier);
}

NSString *protect(NSString *identifier, NSString *path, NSFileProtectionType protection, NSError **error) {
  const int failure = protection ? storeProtection(FilePath(path).c_str(), protection) : 0;
  if (!failure) return identifier;
  failedWriting(error, path, failure);
  return nil;
}

} // namespace

NSString *openSQLiteStore(NSString *path, bool readOnly, NSFileProtectionType protection, NSError **error) {
  const FilePath file(path);
  if (file.error()) {
    failedReading(error, path, file.error());
    return nil;
  }
  sqlite3 *opened = nullptr;
  const int flags = readOnly ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
  int result = sqlite3_open_v2(file.c_str(), &opened, flags, nullptr);
  const Database database(opened);
  std::string identifier;
  if (result == SQLITE_OK) result = identify(opened, readOnly, identifier);
  if (result != SQLITE_OK) return failedOpening(error, path, result);
  return protect([NSString stringWithUTF8String:identifier.c_str()], path, readOnly ? nil : protection, error);
}

NSString *openBinaryStore(NSString *path, bool readOnly, NSFileProtectionType protection, NSError **error) {
  NSData *const stored = [[NSFileManager defaultManager] contentsAtPath:path];
  if (stored) {
    id const metadata = [NSPropertyListSerialization propertyListWithData:stored options:0 format:NULL error:NULL];
    NSString *const identifier =
        [metadata isKindOfClass:[NSDictionary class]] ? [metadata objectForKey:NSStoreUUIDKey] : nil;
    if (identifier) return protect(identifier, path, readOnly ? nil : protection, error);
    failed(error, NSFileReadCorruptFileError,
           [NSString stringWithFormat:@"The file “%@” couldn’t be opened because it isn’t in the correct format.",
                                      [path lastPathComponent]],
           @{NSFilePathErrorKey : path});
    return nil;
  }
  if (readOnly) {
    failedReading(error, path, ENOENT);
    return nil;
  }
  NSString *const identifier = [[NSUUID UUID] UUIDString];
  NSData *const metadata = [NSPropertyListSerialization
      dataWithPropertyList:@{NSStoreUUIDKey : identifier, NSStoreTypeKey : NSBinaryStoreType}
                    format:NSPropertyListBinaryFormat_v1_0
                   options:0
                     error:error];
  if (!metadata || !writeFile(metadata, path, {.atomically = true, .protection = protection}, error)) return nil;
  return identifier;
}

} // namespace qvdevice
