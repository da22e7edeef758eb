// A path in the file system's own spelling, on the stack.
#pragma once

#import <Foundation/Foundation.h>

#include <climits>

namespace qvdevice {

class FilePath {
public:
  explicit FilePath(NSString *path);

  // 0, or the errno that a path of this kind earns: missing, too long, or with a NUL inside, which would name another
  // item.
  int error() const { return error_; }
  const char *c_str() const { return bytes_; }

private:
  char bytes_[PATH_MAX];
  int error_ = 0;
};

} // namespace qvdevice
