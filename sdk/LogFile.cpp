#include "LogFile.h"

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zorbel {

static void writeWhole(int descriptor, std::string_view rest) {
  while (!rest.empty()) {
    const ssize_t written = ::write(descriptor, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      return;
    }
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

bool LogFile::open() {
  struct stat status{};
  if (descriptor_ >= 0) {
    if (::fstat(descriptor_, &status) == 0 && status.st_nlink > 0) {
      return true;
    }
    ::close(descriptor_);
  }
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), ignored);
  descriptor_ = ::open(path_.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0644);
  return descriptor_ >= 0;
}

void LogFile::append(const std::string& line) {
  const std::lock_guard locked(lock_);
  if (open()) {
    writeWhole(descriptor_, line);
  }
}

void writeToConsole(const std::string& line) { writeWhole(STDOUT_FILENO, line); }

} // namespace zorbel
