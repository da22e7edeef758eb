#pragma once

#include <ctime>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace qvdevice {

/// An item that an app left in its container.
struct Item {
  std::string path;       // relative to the container; a folder's ends with "/"
  std::string protection; // the class stored with the item; empty when it has none of its own
};

/// The protection class stored with an item; empty when it has none of its own.
std::string storedProtection(const std::filesystem::path& path);

/// Tells what an app wrote: remembers what a container holds, and later finds what has come or changed.
class ContainerWatch {
public:
  ContainerWatch(std::filesystem::path container, std::string bundleName);

  /// Items that are new or changed since, by path. The bundle, the platform's own folders and the SDK's log are
  /// not the app's.
  std::vector<Item> written() const;
  /// All items, by path.
  std::vector<Item> all() const;

private:
  using Times = std::map<std::string, std::pair<std::int64_t, std::int64_t>>;

  Times times() const;

  std::filesystem::path container_;
  std::string bundleName_;
  Times before_;
};

} // namespace qvdevice
