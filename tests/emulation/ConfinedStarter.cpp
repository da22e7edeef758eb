// confined_starter CONTAINER [DEVICE]: starts as the device does under an emulator, and says whether it was let. With
// WITHOUT_DESCRIPTORS in the environment it can open nothing at all.

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>

#include "container/Confinement.h"

int main(int count, char* arguments[]) {
  if (count < 2) return EXIT_FAILURE;
  if (std::getenv("WITHOUT_DESCRIPTORS") != nullptr) {
    const rlimit none{0, 0};
    if (::setrlimit(RLIMIT_NOFILE, &none) != 0) return EXIT_FAILURE;
  }
  qvdevice::confineWritesTo(arguments[1], count > 2 ? arguments[2] : "");
  std::puts(std::getenv(qvdevice::kConfinedVariable) == nullptr ? "started" : "started, and the variable is there");
}
