#include "container/Container.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "container/FolderCheck.h"
#include "container/Refusal.h"

namespace qvdevice {

namespace {

constexpr char kHowToRun[] = "; start an app with \"qvdevice run APP\", or a program with \"qvdevice exec -- PROGRAM\"";

/// Whether the folder is the real user's home or holds it. An app may remove all that its container holds. The
/// environment is not asked: it names the container to what an app starts.
bool holdsTheUsersHome(const std::string& folder) {
  const passwd* user = ::getpwuid(::geteuid());
  char home[PATH_MAX];
  return user != nullptr && ::realpath(user->pw_dir, home) != nullptr &&
         (std::string(home) + '/').starts_with(folder + '/');
}

std::string checkedContainerPath() {
  const char* given = std::getenv("QVDEVICE_CONTAINER");
  if (given == nullptr || *given == '\0') {
    refuse(std::string("there is no container (QVDEVICE_CONTAINER is not set)") + kHowToRun);
  }
  std::string container = checkedFolder("the container", given, kHowToRun);
  if (holdsTheUsersHome(container))
    refuse(std::string("the container \"") + given + "\" is a home of real files" + kHowToRun);
  return container;
}

} // namespace

const std::string& containerPath() {
  // Never destroyed: exit handlers and other threads ask for it until the very end.
  static const std::string& path = *new std::string(checkedContainerPath());
  return path;
}

void makeStandardFolders() {
  for (const char* folder : {"/Documents", "/Library", "/Library/Caches", "/Library/Preferences", "/tmp"}) {
    const std::string path = containerPath() + folder;
    if (::mkdir(path.c_str(), 0755) == 0) continue;
    const int error = errno;
    struct stat status{};
    if (error == EEXIST && ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) continue;
    refuse("the container's folder \"" + path + "\" cannot be made: " + std::strerror(error));
  }
}

void pointEnvironmentAtContainer() {
  const std::string temporary = containerPath() + "/tmp/";
  ::setenv("HOME", containerPath().c_str(), 1);
  ::setenv("CFFIXED_USER_HOME", containerPath().c_str(), 1);
  ::setenv("TMPDIR", temporary.c_str(), 1);
}

} // namespace qvdevice
