#include "Console.h"

#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace qvdevice {

Console::Console() {
  const std::string path = folder_.path() / "console";
  if (mkfifo(path.c_str(), 0600) == 0) {
    readingEnd_ = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    writingEnd_ = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  }
  if (readingEnd_ < 0 || writingEnd_ < 0) {
    const int reason = errno;
    close(readingEnd_);
    throw std::system_error(reason, std::generic_category(), "no console for the app");
  }
}

Console::~Console() {
  close(readingEnd_);
  close(writingEnd_);
}

void Console::forwardTo(int descriptor) const {
  std::array<char, 65536> buffer;
  for (;;) {
    const ssize_t length = read(readingEnd_, buffer.data(), buffer.size());
    if (length < 0 && errno == EINTR) {
      continue;
    }
    if (length <= 0) {
      return;
    }
    for (std::string_view rest(buffer.data(), static_cast<std::size_t>(length)); !rest.empty();) {
      const ssize_t written = write(descriptor, rest.data(), rest.size());
      if (written < 0 && errno == EINTR) {
        continue;
      }
      if (written <= 0) {
        break; // Nobody listens any more; the app is not to wait for them.
      }
      rest.remove_prefix(static_cast<std::size_t>(written));
    }
  }
}

} // namespace qvdevice
