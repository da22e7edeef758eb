#include "Device.h"

#include <string>
#include <string_view>
#include <system_error>

#include "Failure.h"
#include "InstalledApps.h"

namespace fs = std::filesystem;

namespace qvdevice {

/// A database of the device, or what the database engine puts beside one; other apps, and what leaves an app.
static bool isTheDevices(std::string_view name) {
  return name == "Apps" || name == "Outbox" || name == "Print" || name.starts_with("pasteboard.db") ||
         name.starts_with("keychain.db");
}

fs::path prepareDevice(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) {
    throw Failure(kCannotStart, "cannot make the device " + folder.string() + ": " + error.message());
  }
  if (!fs::is_directory(folder)) {
    throw Failure(kCannotStart, folder.string() + " is not a folder, so it cannot be a device");
  }
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    if (!isTheDevices(name)) {
      throw Failure(kCannotStart,
                    folder.string() + " is no device: it holds " + name + "; name an empty or a new folder");
    }
  }
  return fs::canonical(folder);
}

DeviceToRunOn::DeviceToRunOn(const std::optional<fs::path>& given, const std::vector<fs::path>& installed) {
  if (given) {
    folder_ = prepareDevice(*given);
  } else if (!installed.empty()) {
    folder_ = fs::canonical(temporary_.emplace().path());
  }
  for (const fs::path& app : installed) {
    installOnDevice(app, folder_);
  }
}

} // namespace qvdevice
