#import "FileErrors.h"
#import "FilePath.h"
#import "FileWriting.h"
#import "ItemReplacement.h"
#include "ReplacesFoundation.h"

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

using namespace qvdevice;

namespace {

BOOL writeWrapper(NSFileWrapper *wrapper, NSString *path, bool atomically, bool updatingNames, NSError **error);

BOOL writeLink(NSFileWrapper *wrapper, NSString *path, NSError **error) {
  const FilePath link(path), destination([wrapper symbolicLinkDestination]);
  if (link.error()) return failedWriting(error, path, link.error());
  if (destination.error()) return failedWriting(error, path, destination.error());
  if (unlink(link.c_str()) != 0 && errno != ENOENT) return failedWriting(error, path, errno);
  return symlink(destination.c_str(), link.c_str()) == 0 ? YES : failedWriting(error, path, errno);
}

BOOL writeChildren(NSFileWrapper *wrapper, NSString *path, bool updatingNames, NSError **error) {
  NSDictionary *const children = [wrapper fileWrappers];
  for (NSString *name in children)
    if (!writeWrapper([children objectForKey:name], [path stringByAppendingPathComponent:name], false, updatingNames,
                      error))
      return NO;
  return YES;
}

// A folder is made whole beside its place and takes it in one step, so that no half-written package is ever seen and
// children that the wrapper no longer has do not survive.
BOOL writeFolder(NSFileWrapper *wrapper, NSString *path, bool updatingNames, NSError **error) {
  NSString *const beside = [NSString stringWithFormat:@"%@.sb-%@", path, [[NSUUID UUID] UUIDString]];
  const FilePath folder(beside);
  if (folder.error() || mkdir(folder.c_str(), 0777) != 0)
    return failedWriting(error, path, folder.error() ? folder.error() : errno);
  if (!writeChildren(wrapper, beside, updatingNames, error)) {
    [[NSFileManager defaultManager] removeItemAtPath:beside error:NULL];
    return NO;
  }
  const int failure = replaceItem(path, beside);
  return failure ? failedWriting(error, path, failure) : YES;
}

BOOL writeWrapper(NSFileWrapper *wrapper, NSString *path, bool atomically, bool updatingNames, NSError **error) {
  BOOL written = NO;
  if ([wrapper isDirectory])
    written = writeFolder(wrapper, path, updatingNames, error);
  else if ([wrapper isSymbolicLink])
    written = writeLink(wrapper, path, error);
  else
    written = writeFile([wrapper regularFileContents], path, { .atomically = atomically }, error);
  if (written && updatingNames) [wrapper setFilename:[path lastPathComponent]];
  return written;
}

} // namespace

@implementation NSFileWrapper (QVDeviceFiles)

// Debian's answers nil whatever the URL.
- (id)initWithURL:(NSURL *)url options:(NSFileWrapperReadingOptions)options error:(NSError **)error {
  (void)options;
  NSString *const path = [url isFileURL] ? [url path] : nil;
  if ([[NSFileManager defaultManager] attributesOfItemAtPath:path error:error] == nil) {
    [self release];
    return nil;
  }
  return [self initWithPath:path];
}

- (BOOL)writeToURL:(NSURL *)url
                options:(NSFileWrapperWritingOptions)options
    originalContentsURL:(NSURL *)originalContentsURL
                  error:(NSError **)error {
  // Where the contents came from only lets the platform link to children that did not change; all are written here.
  (void)originalContentsURL;
  NSString *const path = writablePath(url, error);
  return path ? writeWrapper(self, path, (options & NSFileWrapperWritingAtomic) != 0,
                             (options & NSFileWrapperWritingWithNameUpdating) != 0, error)
              : NO;
}

@end
