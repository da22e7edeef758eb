#include "../platform/Foundation/NSFileWrapper.hpp"
#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

BOOL sb_writeToURL_options_originalContentsURL_error(NSFileWrapper self, SEL, NSURL url,
                                                     NSFileWrapperWritingOptions options, NSURL originalContents,
                                                     NSError* error) {
  const BOOL written =
      send<BOOL>(self, "sb_writeToURL:options:originalContentsURL:error:"_sel, url, options, originalContents, error);
  if (written) {
    forceFileProtectionForItemAtURL(url); // the wrapper's top item only
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_writeToURL_options_originalContentsURL_error>("writeToURL:options:originalContentsURL:error:",
                                                           "sb_writeToURL:options:originalContentsURL:error:"),
};

} // namespace

constinit const HookGroup NSFileWrapperSandbox{"NSFileWrapperSandboxInit", "NSFileWrapper", HookedMethods::instance,
                                               hooks};

} // namespace qvsb

// The line names another class than the one that is hooked; log readers know it so.
void NSFileWrapperSandboxInit() {
  using namespace qvsb;
  installHooks(NSFileWrapperSandbox, "Sandboxing NSData"_ns);
}
