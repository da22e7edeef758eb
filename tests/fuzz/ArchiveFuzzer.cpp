// Archives of any bytes: each is refused with a sentence, or wrapped and then unwrapped to what it was.
#include <cstdio>
#include <cstdlib>

#include "AppArchive.h"
#include "Failure.h"

using namespace qvwrap;

namespace {

void fail(const char* sentence) {
  std::fprintf(stderr, "fuzzer: %s\n", sentence);
  std::abort();
}

Framework framework() {
  Framework framework;
  framework.folders = {"en.lproj"};
  framework.files = {{"Info.plist", {'x'}, false}, {"QVSandbox", Bytes(100, 'y'), true}, {"en.lproj/z", {}, false}};
  return framework;
}

/// An object for the archive that puts what becomes of it into `saved`.
AppArchive open(View file, Bytes& saved) {
  return {file, "Fuzzed.ipa", [&saved](const ZipResult& result) {
            saved.clear();
            result.forEach([&](View piece) { append(saved, piece); });
          }};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Bytes file(data, data + size); // of exactly this size, so that a byte read beyond its end is seen
  Bytes wrapped;
  Bytes executable;
  bool addFolder = false;
  try {
    AppArchive app = open(file, wrapped);
    app.extensions();
    if (app.holds(kFrameworkFolder)) {
      Bytes taken;
      open(file, taken).take(app.executable(), true);
      return 0;
    }
    addFolder = !app.holds("Frameworks");
    executable.assign(app.executable().begin(), app.executable().end());
    Bytes changed = executable;
    if (!changed.empty()) changed[changed.size() / 4] ^= 1;
    app.put(changed, framework(), addFolder);
  } catch (const Failure&) {
    return 0;
  }
  Bytes restored;
  const App::Taken taken = open(wrapped, restored).take(executable, addFolder);
  if (taken != App::Taken::kAsBefore || restored != file) fail("the archive is not what it was");
  return 0;
}
