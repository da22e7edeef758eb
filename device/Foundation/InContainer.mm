#import "InContainer.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "container/Container.h"

namespace qvdevice {
namespace {

int refusalOf(const char *path) {
  char real[PATH_MAX];
  if (!realpath(path, real)) return errno;
  const std::string_view item(real), container(containerPath());
  const bool inside = item.substr(0, container.size()) == container &&
                      (item.size() == container.size() || item[container.size()] == '/');
  return inside ? 0 : EPERM;
}

} // namespace

int refusalOutsideContainer(const char *path, bool isLink) {
  if (isLink) return refusalOf(path);
  const char *const slash = std::strrchr(path, '/');
  if (!slash || slash == path) return refusalOf(path);
  // Apps write many items into one folder; following its path each time would cost more than the attributes do.
  static thread_local std::string approved;
  const std::string_view folder(path, static_cast<size_t>(slash - path));
  if (folder == approved) return 0;
  const std::string spelled(folder);
  const int refusal = refusalOf(spelled.c_str());
  if (!refusal && path[0] == '/') approved = spelled;
  // The container itself may be meant, whose own folder lies outside.
  return refusal ? refusalOf(path) : 0;
}

} // namespace qvdevice
