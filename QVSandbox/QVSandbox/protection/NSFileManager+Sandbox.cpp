#include "../platform/Foundation/NSData.hpp"
#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

// Unlike the other classes' hooks, these protect through the file manager that was asked.

BOOL sb_createDirectoryAtURL(NSFileManager self, SEL, NSURL url, BOOL intermediates, NSDictionary attributes,
                             NSError* error) {
  const BOOL created = send<BOOL>(self, "sb_createDirectoryAtURL:withIntermediateDirectories:attributes:error:"_sel,
                                  url, intermediates, attributes, error);
  if (created) {
    forceFileProtectionForItemAtPath(self, url.path());
  }
  return created;
}

BOOL sb_createDirectoryAtPath(NSFileManager self, SEL, NSString path, BOOL intermediates, NSDictionary attributes,
                              NSError* error) {
  const BOOL created = send<BOOL>(self, "sb_createDirectoryAtPath:withIntermediateDirectories:attributes:error:"_sel,
                                  path, intermediates, attributes, error);
  if (created) {
    forceFileProtectionForItemAtPath(self, path);
  }
  return created;
}

BOOL sb_createFileAtPath_contents_attributes(NSFileManager self, SEL, NSString path, NSData contents,
                                             NSDictionary attributes) {
  const BOOL created = send<BOOL>(self, "sb_createFileAtPath:contents:attributes:"_sel, path, contents, attributes);
  if (created) {
    forceFileProtectionForItemAtPath(self, path);
  }
  return created;
}

BOOL sb_setAttributes_ofItemAtPath_error(NSFileManager self, SEL, NSDictionary attributes, NSString path,
                                         NSError* error) {
  const BOOL set = send<BOOL>(self, "sb_setAttributes:ofItemAtPath:error:"_sel, attributes, path, error);
  if (set) {
    forceFileProtectionForItemAtPath(self, path);
  }
  return set;
}

constexpr Hook hooks[] = {
    hook<&sb_createDirectoryAtURL>("createDirectoryAtURL:withIntermediateDirectories:attributes:error:",
                                   "sb_createDirectoryAtURL:withIntermediateDirectories:attributes:error:"),
    hook<&sb_createDirectoryAtPath>("createDirectoryAtPath:withIntermediateDirectories:attributes:error:",
                                    "sb_createDirectoryAtPath:withIntermediateDirectories:attributes:error:"),
    hook<&sb_createFileAtPath_contents_attributes>("createFileAtPath:contents:attributes:",
                                                   "sb_createFileAtPath:contents:attributes:"),
    hook<&sb_setAttributes_ofItemAtPath_error>("setAttributes:ofItemAtPath:error:",
                                               "sb_setAttributes:ofItemAtPath:error:"),
};

} // namespace

constinit const HookGroup NSFileManagerSandbox{"NSFileManagerSandboxInit", "NSFileManager", HookedMethods::instance,
                                               hooks};

} // namespace qvsb

// The line names another class than the one that is hooked; log readers know it so.
void NSFileManagerSandboxInit() {
  using namespace qvsb;
  installHooks(NSFileManagerSandbox, "Sandboxing NSData"_ns);
}
