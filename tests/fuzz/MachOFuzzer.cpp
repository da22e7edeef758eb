// Executables of any bytes: each is refused with a sentence, or wrapped and then unwrapped to what it was.
#include <cstdio>
#include <cstdlib>

#include "Failure.h"
#include "LoadCommands.h"

using namespace qvwrap;

namespace {

std::vector<Slice> read(View file) { return readMachO(file, FileType::kExecutable, "it"); }

void fail(const char* sentence) {
  std::fprintf(stderr, "fuzzer: %s\n", sentence);
  std::abort();
}

/// What the input is already, taken apart.
void remove(View file) {
  try {
    const Restored restored = removeLibrary(file, read(file));
    if (restored.file.size() != file.size()) fail("the executable has another size without the library");
  } catch (const Failure&) {
    return;
  }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Bytes file(data, data + size); // of exactly this size, so that a byte read beyond its end is seen
  remove(file);
  Bytes wrapped;
  try {
    const std::vector<Slice> slices = read(file);
    refuseUnlessWrappable(slices, true);
    wrapped = addLibrary(file, slices, LibraryCommand(), size % 2 == 0);
  } catch (const Failure&) {
    return 0;
  }
  const Restored restored = removeLibrary(wrapped, read(wrapped));
  if (!restored.original || restored.file != file) fail("the executable is not what it was");
  return 0;
}
