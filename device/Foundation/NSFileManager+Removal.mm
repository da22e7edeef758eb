// Removing items. A folder goes with all that it holds; the first thing in it that cannot be removed ends that, as
// where a file manager has no delegate to ask.
#import "FileErrors.h"
#import "FileName.h"
#import "FilePath.h"
#include "FolderWalk.h"
#include "ReplacesFoundation.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace qvdevice;

namespace {

class Removal : public FolderVisitor {
public:
  int found(int parent, const FolderEntry &entry, const std::string &path) override {
    return entry.isFolder ? 0 : removeAt(parent, entry.name, path, 0);
  }

  int left(int parent, const std::string &name, const std::string &path) override {
    return removeAt(parent, name, path, AT_REMOVEDIR);
  }

  // It may be empty, and then need not be read.
  int unreadable(int parent, const std::string &name, const std::string &path, int error) override {
    if (unlinkat(parent, name.c_str(), AT_REMOVEDIR) == 0 || errno == ENOENT) return 0;
    culprit_ = path;
    return error;
  }

  // What could not be removed, from the root on; empty for the root.
  const std::string &culprit() const { return culprit_; }

private:
  int removeAt(int parent, const std::string &name, const std::string &path, int flags) {
    // Somebody else may have been quicker.
    if (unlinkat(parent, name.c_str(), flags) == 0 || errno == ENOENT) return 0;
    const int error = errno;
    culprit_ = path;
    return error;
  }

  std::string culprit_;
};

BOOL removeItem(NSString *path, NSError **error) {
  const FilePath item(path);
  if (item.error()) return failedRemoving(error, path, item.error());
  if (unlink(item.c_str()) == 0) return YES;
  if (errno != EISDIR) return failedRemoving(error, path, errno);
  Removal removal;
  int failure = walkFolder(item.c_str(), RootLink::refused, removal);
  // Empty, it can be removed though it cannot be read.
  if ((!failure || removal.culprit().empty()) && rmdir(item.c_str()) == 0) return YES;
  if (!failure) failure = errno;
  NSString *const culprit =
      removal.culprit().empty() ? path : [path stringByAppendingPathComponent:fileName(removal.culprit())];
  return failedRemoving(error, culprit, failure);
}

} // namespace

@implementation NSFileManager (QVDeviceRemoval)

- (BOOL)removeItemAtPath:(NSString *)path error:(NSError **)error {
  return removeItem(path, error);
}

- (BOOL)removeItemAtURL:(NSURL *)url error:(NSError **)error {
  if (![url isFileURL])
    return failed(error, NSFileWriteUnsupportedSchemeError, @"The specified URL type isn’t supported.", nil);
  return removeItem([url path], error);
}

@end
