#import "FilePath.h"

#import "FileName.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace qvdevice {

FilePath::FilePath(NSString *path) {
  bytes_[0] = '\0';
  if ([path length] == 0) {
    error_ = ENOENT;
    return;
  }
  if (![path getCString:bytes_ maxLength:sizeof bytes_ encoding:NSUTF8StringEncoding]) {
    error_ = [path canBeConvertedToEncoding:NSUTF8StringEncoding] ? ENAMETOOLONG : EILSEQ;
    return;
  }
  const size_t length = std::strlen(bytes_);
  const bool ascii = std::all_of(bytes_, bytes_ + length, [](char byte) { return (byte & 0x80) == 0; });
  const NSUInteger whole = ascii ? [path length] : [path lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
  if (length != whole) error_ = EILSEQ;
  if (!ascii) restoreFileName(bytes_);
}

} // namespace qvdevice
