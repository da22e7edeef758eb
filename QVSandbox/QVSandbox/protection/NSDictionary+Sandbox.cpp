#include "AtomicWriting.hpp"
#include "FileProtection.hpp"

namespace qvsb {

namespace {

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
  using namespace qvsb;
  installHooks(NSDictionarySandbox, "Sandboxing NSArray"_ns);
}
