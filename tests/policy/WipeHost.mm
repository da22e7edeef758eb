// WipeHost [unprivileged] [without-space] STEP...: runs the steps and writes the SDK's lines to standard output. For
// what a test cannot do to itself: lose its privileges, its space, or its life.
#include "Wipe.h"

#include <grp.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

/// Rights that root has whatever an item's permissions say; who runs the tests without them has nothing to lose.
bool losePrivileges() {
  constexpr uid_t nobody = 65534;
  // What was made while the library was loaded is not what a test has put there.
  std::filesystem::remove_all(wipe::home("Library/Logs"));
  std::filesystem::remove_all(wipe::home("Library/Preferences"));
  return geteuid() != 0 || (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0);
}

/// Every byte that is written to a file fails from now on, as on a disk that is full.
bool loseSpace() {
  const rlimit none{0, 0};
  return signal(SIGXFSZ, SIG_IGN) != SIG_ERR && setrlimit(RLIMIT_FSIZE, &none) == 0;
}

} // namespace

int main(int count, char *words[]) {
  if (!wipe::homeIsTheContainer() || wipe::util() == Nil) return 70;
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  bool captured = true;
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(words[i], "unprivileged") == 0) {
      if (!losePrivileges()) return 71;
    } else if (std::strcmp(words[i], "without-space") == 0) {
      if (!loseSpace()) return 72;
      captured = false;
    }
  }
  // Without space the SDK's own log file is what fails.
  if (captured) {
    wipe::captureLog([](const std::string &line) {
      std::printf("%s\n", line.c_str());
      std::fflush(stdout);
    });
  }
  for (int i = 1; i < count; ++i) {
    if (std::strcmp(words[i], "keychain") == 0) [wipe::util() _cleanUpKeychain];
    if (std::strcmp(words[i], "preferences") == 0) [wipe::util() _cleanUpPreferences];
    if (std::strcmp(words[i], "files") == 0) [wipe::util() _cleanUpFileSystem];
  }
  [pool drain];
  return 0;
}
