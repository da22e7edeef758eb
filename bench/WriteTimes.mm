// Writes the same file again and again, for someone who counts the system calls from outside:
// WriteTimes alone|bare|byHand|hooked NUMBER
#import "Writing.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

using bench::Writing;

constexpr std::pair<std::string_view, BOOL (Writing::*)() const> ways[] = {
    {"alone", &Writing::alone},
    {"bare", &Writing::bare},
    {"byHand", &Writing::byHand},
    {"hooked", &Writing::hooked},
};

bool writeTimes(BOOL (Writing::*way)() const, long times) {
  const Writing file(@"counted");
  for (long i = 0; i < times; ++i) {
    NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
    const BOOL written = (file.*way)();
    [pool drain];
    if (!written) return false;
  }
  return true;
}

} // namespace

int main(int argc, char **argv) {
  const long times = argc == 3 ? std::strtol(argv[2], nullptr, 10) : 0;
  if (times > 0)
    for (const auto &[name, way] : ways)
      if (name == argv[1]) {
        NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
        const bool well = writeTimes(way, times);
        [pool drain];
        if (!well) std::fputs("a write failed\n", stderr);
        return well ? 0 : 1;
      }
  std::fputs("usage: WriteTimes alone|bare|byHand|hooked NUMBER\n", stderr);
  return 64;
}
