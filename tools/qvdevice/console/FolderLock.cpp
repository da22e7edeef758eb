#include "FolderLock.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "Failure.h"

namespace qvdevice {

FolderLock::FolderLock(const std::filesystem::path& folder, const std::string& what)
    : descriptor_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (descriptor_ >= 0 && flock(descriptor_, LOCK_EX | LOCK_NB) == 0) {
    return;
  }
  const int reason = errno;
  close(descriptor_);
  if (reason == EWOULDBLOCK) {
    throw Failure(kCannotStart, "there is a console already for " + what + " " + folder.string() +
                                    "; end that one first, or name another folder");
  }
  throw Failure(kCannotStart, "cannot lock " + what + " " + folder.string() + ": " + std::strerror(reason));
}

FolderLock::~FolderLock() { close(descriptor_); }

} // namespace qvdevice
