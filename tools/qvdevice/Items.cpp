#include "Items.h"

#include <array>
#include <set>

#include <sys/stat.h>
#include <sys/xattr.h>

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

const std::set<std::string> kPlatformFolders{"Documents/",
                                             "Library/",
                                             "Library/Application Support/",
                                             "Library/Caches/",
                                             "Library/Logs/",
                                             "Library/Preferences/",
                                             "Library/Preferences/.lck/",
                                             "tmp/"};

} // namespace

std::string storedProtection(const fs::path& path) {
  std::array<char, 256> value{};
  const ssize_t length = lgetxattr(path.c_str(), "user.qv.protection", value.data(), value.size());
  return length > 0 ? std::string(value.data(), static_cast<std::size_t>(length)) : std::string();
}

ContainerWatch::ContainerWatch(fs::path container, std::string bundleName)
    : container_(std::move(container)), bundleName_(std::move(bundleName)), before_(times()) {}

ContainerWatch::Times ContainerWatch::times() const {
  Times found;
  // The app may be at work: what is there now may be gone a moment later.
  std::error_code error;
  fs::recursive_directory_iterator item(container_, fs::directory_options::skip_permission_denied, error);
  for (; item != fs::recursive_directory_iterator(); item.increment(error)) {
    std::string path = item->path().lexically_relative(container_).string();
    if (path == bundleName_ || path == "Library/Logs/Zorbel") {
      item.disable_recursion_pending();
      continue;
    }
    struct stat status{};
    if (lstat(item->path().c_str(), &status) != 0) {
      continue;
    }
    if (S_ISDIR(status.st_mode)) {
      path += '/';
    }
    if (!kPlatformFolders.contains(path)) {
      found[path] = {status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec,
                     status.st_ctim.tv_sec * 1'000'000'000 + status.st_ctim.tv_nsec};
    }
  }
  return found;
}

std::vector<Item> ContainerWatch::all() const {
  std::vector<Item> items;
  for (const auto& [path, time] : times()) {
    items.push_back({path, storedProtection(container_ / path)});
  }
  return items;
}

std::vector<Item> ContainerWatch::written() const {
  std::vector<Item> items;
  for (const auto& [path, time] : times()) {
    const auto known = before_.find(path);
    if (known == before_.end() || known->second != time) {
      items.push_back({path, storedProtection(container_ / path)});
    }
  }
  return items;
}

} // namespace qvdevice
