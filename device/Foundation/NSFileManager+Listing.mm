// What there is. Foundation's own leaves out names that are not text and takes a backslash for a slash.
#import "FileErrors.h"
#import "FileName.h"
#import "FilePath.h"
#include "FolderWalk.h"
#include "ReplacesFoundation.h"

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace qvdevice;

namespace {

class Subpaths : public FolderVisitor {
public:
  explicit Subpaths(NSMutableArray *paths) : paths_(paths) {}
  int found(int, const FolderEntry &, const std::string &path) override {
    [paths_ addObject:fileName(path)];
    return 0;
  }

private:
  NSMutableArray *paths_;
};

bool readStatus(NSString *path, struct stat &status) {
  const FilePath file(path);
  return !file.error() && stat(file.c_str(), &status) == 0;
}

} // namespace

@implementation NSFileManager (QVDeviceListing)

- (BOOL)fileExistsAtPath:(NSString *)path {
  struct stat status;
  return readStatus(path, status);
}

- (BOOL)fileExistsAtPath:(NSString *)path isDirectory:(BOOL *)isDirectory {
  struct stat status = {};
  const bool exists = readStatus(path, status);
  if (isDirectory) *isDirectory = exists && S_ISDIR(status.st_mode);
  return exists;
}

- (NSString *)destinationOfSymbolicLinkAtPath:(NSString *)path error:(NSError **)error {
  const FilePath link(path);
  char destination[PATH_MAX];
  const ssize_t length = link.error() ? -1 : readlink(link.c_str(), destination, sizeof destination);
  if (length < 0) {
    failedReading(error, path, link.error() ? link.error() : errno);
    return nil;
  }
  return fileName({destination, static_cast<size_t>(length)});
}

- (NSArray *)contentsOfDirectoryAtPath:(NSString *)path error:(NSError **)error {
  const FilePath folder(path);
  int failure = folder.error();
  std::vector<FolderEntry> entries;
  if (!failure) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    failure = descriptor < 0 ? errno : listFolder(descriptor, entries);
    if (descriptor >= 0) close(descriptor);
  }
  if (failure) {
    failedReading(error, path, failure);
    return nil;
  }
  NSMutableArray *const names = [NSMutableArray arrayWithCapacity:entries.size()];
  for (const FolderEntry &entry : entries)
    [names addObject:fileName(entry.name)];
  return names;
}

- (NSArray *)subpathsAtPath:(NSString *)path {
  const FilePath folder(path);
  NSMutableArray *const paths = [NSMutableArray array];
  Subpaths visitor(paths);
  // A folder that changes meanwhile is listed as far as that goes.
  struct stat status;
  if (folder.error() || stat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)) return nil;
  if (walkFolder(folder.c_str(), RootLink::followed, visitor) != 0 && [paths count] == 0) return nil;
  return paths;
}

@end
