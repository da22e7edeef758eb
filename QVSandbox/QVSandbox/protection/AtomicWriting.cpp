#include "AtomicWriting.hpp"

#include "NSFileManager+Helpers.hpp"

namespace qvsb {

BOOL sb_writeToFile_atomically(NSObject self, SEL, NSString path, BOOL atomically) {
  const BOOL written = send<BOOL>(self, "sb_writeToFile:atomically:"_sel, path, atomically);
  if (written) {
    forceFileProtectionForItemAtPath(path);
  }
  return written;
}

BOOL sb_writeToURL_atomically(NSObject self, SEL, NSURL url, BOOL atomically) {
  const BOOL written = send<BOOL>(self, "sb_writeToURL:atomically:"_sel, url, atomically);
  if (written) {
    forceFileProtectionForItemAtURL(url);
  }
  return written;
}

} // namespace qvsb
