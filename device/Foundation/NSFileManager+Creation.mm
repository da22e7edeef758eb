#import "DataProtection.h"
#import "FileCreation.h"
#import "FileErrors.h"
#import "FilePath.h"
#import "FileWriting.h"
#include "ReplacesFoundation.h"

#include <cerrno>
#include <sys/stat.h>

using namespace qvdevice;

namespace {

constexpr mode_t newFolderMode = 0777;

bool isFolder(const char *path) {
  struct stat status;
  return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

namespace qvdevice {

BOOL createFolder(NSString *path, BOOL withIntermediates, NSDictionary *attributes, NSError **error) {
  const FilePath folder(path);
  if (folder.error()) return failedWriting(error, path, folder.error());
  if (mkdir(folder.c_str(), newFolderMode) != 0) {
    const int failure = errno;
    if (withIntermediates && failure == EEXIST && isFolder(folder.c_str())) return YES;
    NSString *const parent = [path stringByDeletingLastPathComponent];
    if (!withIntermediates || failure != ENOENT || [parent length] == 0 || [parent isEqualToString:path])
      return failedWriting(error, path, failure);
    if (!createFolder(parent, YES, attributes, error)) return NO;
    // Another thread may have been quicker with the folder itself.
    if (mkdir(folder.c_str(), newFolderMode) != 0 && !(errno == EEXIST && isFolder(folder.c_str())))
      return failedWriting(error, path, errno);
  }
  return [attributes count] ? setAttributes(attributes, path, error) : YES;
}

} // namespace qvdevice

@implementation NSFileManager (QVDeviceCreation)

- (BOOL)createDirectoryAtPath:(NSString *)path
    withIntermediateDirectories:(BOOL)intermediates
                     attributes:(NSDictionary *)attributes
                          error:(NSError **)error {
  return createFolder(path, intermediates, attributes, error);
}

- (BOOL)createDirectoryAtURL:(NSURL *)url
    withIntermediateDirectories:(BOOL)intermediates
                     attributes:(NSDictionary *)attributes
                          error:(NSError **)error {
  NSString *const path = writablePath(url, error);
  return path ? createFolder(path, intermediates, attributes, error) : NO;
}

- (BOOL)createFileAtPath:(NSString *)path contents:(NSData *)contents attributes:(NSDictionary *)attributes {
  // The class goes with the file from its first byte on, so it is not among what is set afterwards.
  id const className = [attributes objectForKey:NSFileProtectionKey];
  NSFileProtectionType const protection = className ? protectionNamed(className) : nil;
  if (className && !protection) return NO;
  if (!writeFile(contents ? contents : [NSData data], path, { .atomically = true, .protection = protection }, NULL))
    return NO;
  if ([attributes count] == (className ? 1u : 0u)) return YES;
  NSMutableDictionary *const others = [[attributes mutableCopy] autorelease];
  [others removeObjectForKey:NSFileProtectionKey];
  return setAttributes(others, path, NULL);
}

@end
