// The same hook with the library's binding, written and installed as the hooks under QVSandbox/protection are.
#include "platform/objc/ownership.hpp"
#include "startup/HookGroup.hpp"
#include "startup/NSObject+QVSBJRSwizzle.hpp"

extern "C" unsigned long benchSeenByUs;
unsigned long benchSeenByUs = 0;

namespace {

using namespace qvsb;

BOOL sb_writeFile_atomically(NSObject self, SEL, NSString path, BOOL atomically) {
  const BOOL written = send<BOOL>(self, "sb_writeFile:atomically:"_sel, path, atomically);
  if (written) {
    ++benchSeenByUs;
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_writeFile_atomically>("writeFile:atomically:", "sb_writeFile:atomically:"),
};

constinit const HookGroup QVBenchSandbox{"benchHookByUs", "QVBenchHookedWriter", HookedMethods::instance, hooks};

} // namespace

extern "C" void benchHookByUs() {
  const AutoreleasePool pool;
  addCategory(NSObjectQVSBJRSwizzle);
  addReplacements(QVBenchSandbox);
  installHooks(QVBenchSandbox, "Sandboxing QVBenchHookedWriter"_ns);
}
