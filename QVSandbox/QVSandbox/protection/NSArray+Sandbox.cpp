#include "../platform/Foundation/NSArray.hpp"
#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

BOOL sb_writeToFile_atomically(NSArray self, SEL, NSString path, BOOL atomically) {
  const BOOL written = send<BOOL>(self, "sb_writeToFile:atomically:"_sel, path, atomically);
  if (written) {
    forceFileProtectionForItemAtPath(path);
  }
  return written;
}

BOOL sb_writeToURL_atomically(NSArray self, SEL, NSURL url, BOOL atomically) {
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

constinit const HookGroup NSArraySandbox{"NSArraySandboxInit", "NSArray", HookedMethods::instance, hooks};

} // namespace qvsb

void NSArraySandboxInit() { qvsb::installHooks(qvsb::NSArraySandbox, qvsb::operator""_ns < "Sandboxing NSArray">()); }
