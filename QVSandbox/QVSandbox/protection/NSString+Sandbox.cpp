#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

BOOL sb_writeToFile_atomically_encoding_error(NSString self, SEL, NSString path, BOOL atomically,
                                              NSStringEncoding encoding, NSError* error) {
  const BOOL written =
      send<BOOL>(self, "sb_writeToFile:atomically:encoding:error:"_sel, path, atomically, encoding, error);
  if (written) {
    forceFileProtectionForItemAtPath(path);
  }
  return written;
}

BOOL sb_writeToURL_atomically_encoding_error(NSString self, SEL, NSURL url, BOOL atomically, NSStringEncoding encoding,
                                             NSError* error) {
  const BOOL written =
      send<BOOL>(self, "sb_writeToURL:atomically:encoding:error:"_sel, url, atomically, encoding, error);
  if (written) {
    forceFileProtectionForItemAtURL(url);
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_writeToFile_atomically_encoding_error>("writeToFile:atomically:encoding:error:",
                                                    "sb_writeToFile:atomically:encoding:error:"),
    hook<&sb_writeToURL_atomically_encoding_error>("writeToURL:atomically:encoding:error:",
                                                   "sb_writeToURL:atomically:encoding:error:"),
};

} // namespace

constinit const HookGroup NSStringSandbox{"NSStringSandboxInit", "NSString", HookedMethods::instance, hooks};

} // namespace qvsb

void NSStringSandboxInit() {
  using namespace qvsb;
  installHooks(NSStringSandbox, "Sandboxing NSString"_ns);
}
