#include "container/FolderCheck.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

#include "container/Refusal.h"

namespace qvdevice {

namespace {

bool isUtf8(const char* text) {
  try {
    return !nlohmann::json(text).dump().empty();
  } catch (const nlohmann::json::type_error&) {
    return false;
  }
}

} // namespace

std::string checkedFolder(const std::string& what, const char* given, const std::string& advice) {
  const std::string folder = what + " \"" + given + "\" ";
  if (*given != '/') refuse(folder + "is not an absolute path" + advice);
  char resolved[PATH_MAX];
  if (::realpath(given, resolved) == nullptr) refuse(folder + "cannot be used: " + std::strerror(errno) + advice);
  struct stat status{};
  if (::stat(resolved, &status) != 0) refuse(folder + "cannot be used: " + std::strerror(errno) + advice);
  if (!S_ISDIR(status.st_mode)) refuse(folder + "is not a folder" + advice);
  // Foundation would answer that there is no home.
  if (!isUtf8(resolved)) refuse(folder + "has a path that is no text" + advice);
  if (std::strcmp(resolved, "/") == 0) refuse(folder + "is the whole file system" + advice);
  if (::access(resolved, R_OK | W_OK | X_OK) != 0) refuse(folder + "cannot be written" + advice);
  return resolved;
}

} // namespace qvdevice
