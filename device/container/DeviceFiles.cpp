#include "container/DeviceFiles.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "container/DeviceFolder.h"

namespace qvdevice {

namespace {

bool isName(std::string_view name) {
  return !name.empty() && name.front() != '.' && name.find('/') == std::string_view::npos &&
         name.find('\0') == std::string_view::npos;
}

/// Makes each of the folders; false when one of them is none, or a name that leads elsewhere.
bool makeFolders(const std::string& folder) {
  for (std::size_t start = 0; start <= folder.size();) {
    const std::size_t end = std::min(folder.find('/', start), folder.size());
    if (!isName(std::string_view(folder).substr(start, end - start))) return false;
    const std::string path = deviceFolder() + '/' + folder.substr(0, end);
    struct stat status{};
    if (::mkdir(path.c_str(), 0755) != 0 && (::lstat(path.c_str(), &status) != 0 || !S_ISDIR(status.st_mode)))
      return false;
    start = end + 1;
  }
  return true;
}

/// "letter.txt", "letter-2.txt", "letter-3.txt"...
std::string numbered(const std::string& name, int number) {
  if (number == 1) return name;
  const std::size_t dot = name.rfind('.');
  const std::size_t end = dot == std::string::npos || dot == 0 ? name.size() : dot;
  return name.substr(0, end) + '-' + std::to_string(number) + name.substr(end);
}

bool writeAll(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

} // namespace

std::string putDeviceFile(const std::string& folder, const std::string& name, std::string_view bytes) {
  if (deviceFolder().empty() || !isName(name) || !makeFolders(folder)) return {};
  for (int number = 1;; ++number) {
    std::string path = folder + '/' + numbered(name, number);
    const int file = ::open((deviceFolder() + '/' + path).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0 && errno == EEXIST) continue;
    if (file < 0) return {};
    const bool written = writeAll(file, bytes);
    return ::close(file) == 0 && written ? path : std::string();
  }
}

std::vector<std::string> deviceFolderEntries(const std::string& folder) {
  std::vector<std::string> names;
  if (deviceFolder().empty()) return names;
  const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir((deviceFolder() + '/' + folder).c_str()), &::closedir);
  if (!open) return names;
  while (const dirent* entry = ::readdir(open.get()))
    if (isName(entry->d_name)) names.emplace_back(entry->d_name);
  std::sort(names.begin(), names.end());
  return names;
}

} // namespace qvdevice
