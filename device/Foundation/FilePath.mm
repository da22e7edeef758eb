#import "FilePath.h"

#import "FileName.h"

#include <cerrno>
#include <cstring>

namespace qvdevice {
namespace {

// Foundation keeps most paths in Latin-1, which is copied as it is; what is ASCII of that is UTF-8 too.
bool copyAscii(NSString *path, char *bytes, size_t size) {
  if ([path fastestEncoding] != NSISOLatin1StringEncoding) return false;
  if (![path getCString:bytes maxLength:size encoding:NSISOLatin1StringEncoding]) return false;
  const size_t length = std::strlen(bytes);
  return length == [path length] && isAscii({bytes, length});
}

} // namespace

FilePath::FilePath(NSString *path) {
  bytes_[0] = '\0';
  if ([path length] == 0) {
    error_ = ENOENT;
    return;
  }
  if (copyAscii(path, bytes_, sizeof bytes_)) return;
  if (![path getCString:bytes_ maxLength:sizeof bytes_ encoding:NSUTF8StringEncoding]) {
    error_ = [path canBeConvertedToEncoding:NSUTF8StringEncoding] ? ENAMETOOLONG : EILSEQ;
    return;
  }
  const size_t length = std::strlen(bytes_);
  const bool ascii = isAscii({bytes_, length});
  const NSUInteger whole = ascii ? [path length] : [path lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
  if (length != whole) error_ = EILSEQ;
  if (!ascii) restoreFileName(bytes_);
}

} // namespace qvdevice
