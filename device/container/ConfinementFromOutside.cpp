// In place of Confinement.cpp where an emulator runs the device: qemu-user answers that there is no Landlock. The
// process was confined before it became an emulated one; nothing starts here before that is certain.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "container/Confinement.h"
#include "container/Refusal.h"

namespace qvdevice {

namespace {

constexpr char kHowToRun[] = "; under an emulator start it through qvconfine";

/// The folders that hold `path`, and those that anybody may write.
std::vector<std::string> foldersOutside(const std::string& path) {
  std::vector<std::string> folders{"/tmp", "/var/tmp", "/dev/shm"};
  for (std::size_t end = path.rfind('/'); end != std::string::npos && end > 0; end = path.rfind('/', end - 1))
    folders.push_back(path.substr(0, end));
  return folders;
}

enum class Attempt { refusedByTheConfinement, refusedAnyhow, succeeded };

Attempt attemptToWriteIn(const std::string& folder) {
  // Landlock has no part in what access() answers.
  if (::access(folder.c_str(), W_OK | X_OK) != 0) return Attempt::refusedAnyhow;
  const std::string file = folder + "/qvdevice-confinement-" + std::to_string(::getpid());
  const int descriptor = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (descriptor < 0) return errno == EACCES ? Attempt::refusedByTheConfinement : Attempt::refusedAnyhow;
  ::close(descriptor);
  ::unlink(file.c_str());
  return Attempt::succeeded;
}

} // namespace

void confineWritesTo(const std::string& container, const std::string& device) {
  const char* told = std::getenv(kConfinedVariable);
  if (told == nullptr || told != confinedTo(container, device))
    refuse("this process was not confined to its container before it started" + std::string(kHowToRun));
  ::unsetenv(kConfinedVariable);

  bool proved = false;
  for (const std::string& folder : foldersOutside(container)) {
    // The container or the device's folder may lie right in there, but neither may be it.
    if (folder == container || folder == device) continue;
    switch (attemptToWriteIn(folder)) {
    case Attempt::succeeded:
      refuse("this process can write in \"" + folder + "\", which is outside its container" + kHowToRun);
    case Attempt::refusedByTheConfinement:
      proved = true;
      break;
    case Attempt::refusedAnyhow:
      break;
    }
  }
  if (!proved) refuse("nothing shows that this process is confined to its container" + std::string(kHowToRun));
}

} // namespace qvdevice
