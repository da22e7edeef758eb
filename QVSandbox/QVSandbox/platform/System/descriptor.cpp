#include "descriptor.hpp"

#if QVSB_APPLE_RUNTIME

extern "C" int qvsbFcntl(int descriptor, int command, ...) QVSB_SYMBOL(fcntl);

namespace qvsb {

static constexpr int kGetPath = 50; // F_GETPATH

bool pathOfDescriptor(int descriptor, std::span<char, kPathSize> path) {
  return qvsbFcntl(descriptor, kGetPath, path.data()) != -1;
}

} // namespace qvsb

#else

#include <string>
#include <string_view>

extern "C" long qvsbReadLink(const char* link, char* target, unsigned long size) QVSB_SYMBOL(readlink);

namespace qvsb {

bool pathOfDescriptor(int descriptor, std::span<char, kPathSize> path) {
  const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
  const long length = qvsbReadLink(link.c_str(), path.data(), path.size());
  // What does not fit is cut, without a word.
  if (length <= 0 || static_cast<unsigned long>(length) >= path.size()) {
    return false;
  }
  path[static_cast<unsigned long>(length)] = '\0';
  // The kernel writes "pipe:[7]" or "socket:[7]" for what has no path, and this behind one that is gone. A living file
  // of such a name counts as gone too.
  const std::string_view target(path.data(), static_cast<unsigned long>(length));
  return target.starts_with('/') && !target.ends_with(" (deleted)");
}

} // namespace qvsb

#endif
