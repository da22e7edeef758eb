#include "AtomicWriting.hpp"
#include "FileProtection.hpp"

namespace qvsb {

namespace {

constexpr Hook hooks[] = {
    hook<&sb_writeToFile_atomically>("writeToFile:atomically:", "sb_writeToFile:atomically:"),
    hook<&sb_writeToURL_atomically>("writeToURL:atomically:", "sb_writeToURL:atomically:"),
};

} // namespace

constinit const HookGroup NSArraySandbox{"NSArraySandboxInit", "NSArray", HookedMethods::instance, hooks};

} // namespace qvsb

void NSArraySandboxInit() {
  using namespace qvsb;
  installHooks(NSArraySandbox, "Sandboxing NSArray"_ns);
}
