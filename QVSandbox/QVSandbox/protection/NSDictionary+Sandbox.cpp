#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

BOOL sb_writeToFile_atomically(NSDictionary self, SEL, NSString path, BOOL atomically) {
  const BOOL written = send<BOOL>(self, "sb_writeToFile:atomically:"_sel, path, atomically);
  if (written) {
    forceFileProtectionForItemAtPath(path);
  }
  return written;
}

BOOL sb_writeToURL_atomically(NSDictionary self, SEL, NSURL url, BOOL atomically) {
  const BOOL written = send<BOOL>(self, "sb_writeToURL:atomically:"_sel, url, atomically);
  if (written) {
    forceFileProtectionForItemAtURL(url);
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_writeToFile_atomically>("writeToFile:atomically:", "sb_writeToFile:atomically:"),
    hook<&sb_writeToURL_atomically>("writeToURL:atomically:", "sb_writeToURL:atomically:"),
};

} // namespace

constinit const HookGroup NSDictionarySandbox{"NSDictionarySandboxInit", "NSDictionary", HookedMethods::instance,
                                              hooks};

} // namespace qvsb

// The line names another class than the one that is hooked; log readers know it so.
void NSDictionarySandboxInit() {
  qvsb::installHooks(qvsb::NSDictionarySandbox, qvsb::operator""_ns < "Sandboxing NSArray">());
}
