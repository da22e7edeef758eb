#include "container/Container.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "container/Refusal.h"

namespace qvdevice {

namespace {

constexpr char kHowToRun[] = "; start an app with \"qvdevice run APP\", or a program with \"qvdevice exec -- PROGRAM\"";

std::string checkedContainerPath() {
  const char* given = std::getenv("QVDEVICE_CONTAINER");
  if (given == nullptr || *given == '\0') {
    refuse(std::string("there is no container (QVDEVICE_CONTAINER is not set)") + kHowToRun);
  }
  const std::string container = std::string("the container \"") + given + "\" ";
  if (*given != '/') refuse(container + "is not an absolute path" + kHowToRun);
  char resolved[PATH_MAX];
  if (::realpath(given, resolved) == nullptr) refuse(container + "cannot be used: " + std::strerror(errno) + kHowToRun);
  struct stat status{};
  if (::stat(resolved, &status) != 0) refuse(container + "cannot be used: " + std::strerror(errno) + kHowToRun);
  if (!S_ISDIR(status.st_mode)) refuse(container + "is not a folder" + kHowToRun);
  if (std::strcmp(resolved, "/") == 0) refuse(container + "is the whole file system" + kHowToRun);
  if (::access(resolved, R_OK | W_OK | X_OK) != 0) refuse(container + "cannot be written" + kHowToRun);
  return resolved;
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
