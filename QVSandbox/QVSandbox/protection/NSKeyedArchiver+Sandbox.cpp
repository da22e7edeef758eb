#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

BOOL sb_archiveRootObject_toFile(Class self, SEL, Object root, NSString file) {
  const BOOL written = send<BOOL>(self, "sb_archiveRootObject:toFile:"_sel, root, file);
  if (written) {
    forceFileProtectionForItemAtPath(file);
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_archiveRootObject_toFile>("archiveRootObject:toFile:", "sb_archiveRootObject:toFile:"),
};

} // namespace

constinit const HookGroup NSKeyedArchiverSandbox{"NSKeyedArchiverSandboxInit", "NSKeyedArchiver",
                                                 HookedMethods::ofClass, hooks};

} // namespace qvsb

void NSKeyedArchiverSandboxInit() {
  using namespace qvsb;
  installHooks(NSKeyedArchiverSandbox, "Sandboxing NSKeyedArchiver"_ns);
}
