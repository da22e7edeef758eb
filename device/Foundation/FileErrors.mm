#import "FileErrors.h"

#include <cerrno>

namespace qvdevice {
namespace {

enum : NSInteger { fileWriteVolumeReadOnly = 642 };

NSInteger writingCode(int posix) {
  switch (posix) {
  case ENOENT:
    return NSFileNoSuchFileError;
  case EACCES:
  case EPERM:
    return NSFileWriteNoPermissionError;
  case EEXIST:
    return NSFileWriteFileExistsError;
  case ENAMETOOLONG:
  case EILSEQ:
    return NSFileWriteInvalidFileNameError;
  case ENOSPC:
  case EDQUOT:
    return NSFileWriteOutOfSpaceError;
  case EROFS:
    return fileWriteVolumeReadOnly;
  default:
    return NSFileWriteUnknownError;
  }
}

NSInteger readingCode(int posix) {
  switch (posix) {
  case ENOENT:
    return NSFileReadNoSuchFileError;
  case EACCES:
  case EPERM:
    return NSFileReadNoPermissionError;
  case ENAMETOOLONG:
  case EILSEQ:
    return NSFileReadInvalidFileNameError;
  case EFBIG:
    return NSFileReadTooLargeError;
  default:
    return NSFileReadUnknownError;
  }
}

NSString *writingDescription(int posix, NSString *path) {
  NSString *const name = [path lastPathComponent];
  NSString *const folder = [[path stringByDeletingLastPathComponent] lastPathComponent];
  switch (writingCode(posix)) {
  case NSFileNoSuchFileError:
    if ([path length] == 0) return @"The file doesn’t exist.";
    if (![[NSFileManager defaultManager] fileExistsAtPath:[path stringByDeletingLastPathComponent]])
      return [NSString stringWithFormat:@"The folder “%@” doesn’t exist.", folder];
    return [NSString stringWithFormat:@"The file “%@” doesn’t exist.", name];
  case NSFileWriteNoPermissionError:
    return [NSString
        stringWithFormat:@"You don’t have permission to save the file “%@” in the folder “%@”.", name, folder];
  case NSFileWriteFileExistsError:
    return [NSString
        stringWithFormat:
            @"The file “%@” couldn’t be saved in the folder “%@” because a file with the same name already exists.",
            name, folder];
  case NSFileWriteInvalidFileNameError:
    return [NSString stringWithFormat:@"The file name “%@” is invalid.", name];
  case NSFileWriteOutOfSpaceError:
    return [NSString stringWithFormat:@"You can’t save the file “%@” because the volume is out of space.", name];
  case fileWriteVolumeReadOnly:
    return [NSString stringWithFormat:@"You can’t save the file “%@” because the volume is read only.", name];
  default:
    return [NSString stringWithFormat:@"The file “%@” couldn’t be saved in the folder “%@”.", name, folder];
  }
}

NSString *readingDescription(int posix, NSString *path) {
  NSString *const name = [path lastPathComponent];
  switch (readingCode(posix)) {
  case NSFileReadNoSuchFileError:
    return [path length] == 0
               ? @"The file couldn’t be opened because there is no such file."
               : [NSString stringWithFormat:@"The file “%@” couldn’t be opened because there is no such file.", name];
  case NSFileReadNoPermissionError:
    return [NSString
        stringWithFormat:@"The file “%@” couldn’t be opened because you don’t have permission to view it.", name];
  default:
    return [NSString stringWithFormat:@"The file “%@” couldn’t be opened.", name];
  }
}

NSString *removingDescription(int posix, NSString *path) {
  NSString *const name = [path lastPathComponent];
  if (writingCode(posix) == NSFileWriteNoPermissionError)
    return
        [NSString stringWithFormat:@"“%@” couldn’t be removed because you don’t have permission to access it.", name];
  return [NSString stringWithFormat:@"“%@” couldn’t be removed.", name];
}

NSDictionary *information(NSString *path, int posix) {
  NSMutableDictionary *const info = [NSMutableDictionary dictionary];
  if (path) [info setObject:path forKey:NSFilePathErrorKey];
  [info setObject:[NSError errorWithDomain:NSPOSIXErrorDomain code:posix userInfo:nil] forKey:NSUnderlyingErrorKey];
  return info;
}

} // namespace

BOOL failed(NSError **slot, NSInteger code, NSString *description, NSDictionary *info) {
  if (!slot) return NO;
  NSMutableDictionary *const all = [NSMutableDictionary dictionaryWithObject:description
                                                                      forKey:NSLocalizedDescriptionKey];
  [all addEntriesFromDictionary:info];
  *slot = [NSError errorWithDomain:NSCocoaErrorDomain code:code userInfo:all];
  return NO;
}

BOOL failedWriting(NSError **slot, NSString *path, int posix) {
  if (!slot) return NO;
  return failed(slot, writingCode(posix), writingDescription(posix, path), information(path, posix));
}

BOOL failedReading(NSError **slot, NSString *path, int posix) {
  if (!slot) return NO;
  return failed(slot, readingCode(posix), readingDescription(posix, path), information(path, posix));
}

BOOL failedRemoving(NSError **slot, NSString *path, int posix) {
  if (!slot) return NO;
  return failed(slot, writingCode(posix), removingDescription(posix, path), information(path, posix));
}

} // namespace qvdevice
