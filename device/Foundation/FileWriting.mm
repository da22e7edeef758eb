#import "FileWriting.h"

#import "DataProtection.h"
#import "FileErrors.h"
#import "FilePath.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qvdevice {
namespace {

constexpr mode_t newFileMode = 0666;

int writeAll(int descriptor, NSData *contents) {
  const char *bytes = static_cast<const char *>([contents bytes]);
  size_t left = [contents length];
  while (left > 0) {
    const ssize_t written = write(descriptor, bytes, left);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    bytes += written;
    left -= static_cast<size_t>(written);
  }
  return 0;
}

int closed(int descriptor, int error) {
  const int closing = close(descriptor) == 0 ? 0 : errno;
  return error != 0 ? error : closing;
}

// A file beside the one that is to be replaced: only a rename within one folder is sure to stay on one volume.
int openBeside(const char *path, char (&name)[PATH_MAX], int &descriptor) {
  static const auto process = static_cast<unsigned>(getpid());
  static std::atomic<unsigned> counter;
  const char *const slash = std::strrchr(path, '/');
  const int folder = slash ? static_cast<int>(slash - path) + 1 : 0;
  for (;;) {
    const int length = std::snprintf(name, sizeof name, "%.*s.dat.nosync%x.%x", folder, path, process, counter++);
    if (length >= static_cast<int>(sizeof name)) return ENAMETOOLONG;
    descriptor = open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, newFileMode);
    if (descriptor >= 0) return 0;
    if (errno != EEXIST) return errno;
  }
}

int writeAtomically(NSData *contents, const char *path, const Writing &how) {
  struct stat existing;
  const bool replaces = stat(path, &existing) == 0;
  if (replaces && !how.overwriting) return EEXIST;
  NSFileProtectionType const before = replaces && how.protection ? storedProtection(path) : nil;

  char beside[PATH_MAX];
  int descriptor = -1;
  if (const int error = openBeside(path, beside, descriptor)) return error;
  int error = how.protection ? storeProtection(descriptor, how.protection) : 0;
  if (!error) error = writeAll(descriptor, contents);
  if (!error && replaces && S_ISREG(existing.st_mode) && fchmod(descriptor, existing.st_mode & 07777) != 0)
    error = errno;
  error = closed(descriptor, error);
  if (!error && rename(beside, path) != 0) error = errno;
  if (error) {
    unlink(beside);
    return error;
  }
  if (how.protection && how.protection != before) traceProtection(path, before, how.protection);
  return 0;
}

int writeInPlace(NSData *contents, const char *path, const Writing &how) {
  const int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | (how.overwriting ? 0 : O_EXCL);
  const int descriptor = open(path, flags, newFileMode);
  if (descriptor < 0) return errno;
  int error = how.protection ? storeProtection(path, how.protection) : 0;
  if (!error) error = writeAll(descriptor, contents);
  return closed(descriptor, error);
}

} // namespace

BOOL writeFile(NSData *contents, NSString *path, Writing how, NSError **error) {
  const FilePath file(path);
  int failure = file.error();
  if (!failure)
    failure = how.atomically ? writeAtomically(contents, file.c_str(), how) : writeInPlace(contents, file.c_str(), how);
  return failure ? failedWriting(error, path, failure) : YES;
}

BOOL writeFile(NSData *contents, NSURL *url, Writing how, NSError **error) {
  NSString *const path = writablePath(url, error);
  return path ? writeFile(contents, path, how, error) : NO;
}

NSString *writablePath(NSURL *url, NSError **error) {
  if ([url isFileURL]) return [url path];
  failed(error, NSFileWriteUnsupportedSchemeError,
         @"The file couldn’t be saved because the specified URL type isn’t supported.",
         url ? @{NSURLErrorKey : url} : nil);
  return nil;
}

} // namespace qvdevice
