// qvconfine COMMAND [ARGUMENT...]: becomes the command, confined as a program of the device confines itself. For an
// emulator that does not know Landlock: what is taken from a process stays taken when it becomes another program.
//
// Where QVDEVICE_CONTAINER names no container, the command is none of a device's and runs as it is; where it names
// something that is no container, nothing runs.

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "container/Confinement.h"
#include "container/Container.h"
#include "container/DeviceFolder.h"

namespace {

constexpr int kCannotRun = 126;
constexpr std::string_view kKeptPrefix = "QV_KEPT_";

/// The loader's variables, which were hidden from this program's own loader.
void giveBackWhatWasKept() {
  std::vector<std::string> kept;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    if (std::string_view(*entry).starts_with(kKeptPrefix)) kept.emplace_back(*entry);
  }
  for (const std::string& entry : kept) {
    const std::size_t end = entry.find('=');
    ::unsetenv(entry.substr(0, end).c_str());
    ::setenv(entry.substr(kKeptPrefix.size(), end - kKeptPrefix.size()).c_str(), entry.c_str() + end + 1, 1);
  }
}

} // namespace

int main(int count, char* arguments[]) {
  if (count < 2) {
    std::fputs("usage: qvconfine COMMAND [ARGUMENT...]\n", stderr);
    return EXIT_FAILURE;
  }
  ::unsetenv(qvdevice::kConfinedVariable);
  const char* container = std::getenv("QVDEVICE_CONTAINER");
  if (container != nullptr) {
    qvdevice::confineWritesTo(qvdevice::containerPath(), qvdevice::deviceFolder());
    ::setenv(qvdevice::kConfinedVariable,
             qvdevice::confinedTo(qvdevice::containerPath(), qvdevice::deviceFolder()).c_str(), 1);
  }
  giveBackWhatWasKept();
  ::execv(arguments[1], arguments + 1);
  std::fprintf(stderr, "qvconfine: cannot start %s: %s\n", arguments[1], std::strerror(errno));
  return kCannotRun;
}
