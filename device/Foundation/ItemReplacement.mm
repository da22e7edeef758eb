#import "ItemReplacement.h"

#import "FilePath.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace qvdevice {

int replaceItem(NSString *place, NSString *made) {
  const FilePath to(place), from(made);
  if (to.error()) return to.error();
  if (from.error()) return from.error();
  // A folder that holds something cannot be renamed over: the two change places, and the old one is then removed.
  int failure = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_EXCHANGE) == 0 ? 0 : errno;
  if (failure == ENOENT) failure = rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
  NSFileManager *const manager = [NSFileManager defaultManager];
  if ([manager fileExistsAtPath:made]) [manager removeItemAtPath:made error:NULL];
  return failure;
}

} // namespace qvdevice
