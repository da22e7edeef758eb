#include "../platform/Foundation/NSData.hpp"
#include "AtomicWriting.hpp"
#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

BOOL sb_writeToFile_options_error(NSData self, SEL, NSString path, NSDataWritingOptions options, NSError* error) {
  const BOOL written = send<BOOL>(self, "sb_writeToFile:options:error:"_sel, path, options, error);
  if (written) {
    forceFileProtectionForItemAtPath(path);
  }
  return written;
}

BOOL sb_writeToURL_options_error(NSData self, SEL, NSURL url, NSDataWritingOptions options, NSError* error) {
  const BOOL written = send<BOOL>(self, "sb_writeToURL:options:error:"_sel, url, options, error);
  if (written) {
    forceFileProtectionForItemAtURL(url);
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_writeToFile_atomically>("writeToFile:atomically:", "sb_writeToFile:atomically:"),
    hook<&sb_writeToURL_atomically>("writeToURL:atomically:", "sb_writeToURL:atomically:"),
    hook<&sb_writeToFile_options_error>("writeToFile:options:error:", "sb_writeToFile:options:error:"),
    hook<&sb_writeToURL_options_error>("writeToURL:options:error:", "sb_writeToURL:options:error:"),
};

} // namespace

constinit const HookGroup NSDataSandbox{"NSDataSandboxInit", "NSData", HookedMethods::instance, hooks};

} // namespace qvsb

void NSDataSandboxInit() {
  using namespace qvsb;
  installHooks(NSDataSandbox, "Sandboxing NSData"_ns);
}
