#include "InstalledApps.h"

#include <algorithm>
#include <system_error>
#include <vector>

#include "Bundle.h"
#include "Container.h"
#include "Failure.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

constexpr const char* kDocuments = "Documents";

/// What is in a folder, in the order of the names; nothing when there is no such folder.
std::vector<fs::path> entriesOf(const fs::path& folder) {
  std::vector<fs::path> entries;
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
    if (!entry.path().filename().string().starts_with('.')) {
      entries.push_back(entry.path());
    }
  }
  std::sort(entries.begin(), entries.end());
  return entries;
}

} // namespace

void installOnDevice(const fs::path& app, const fs::path& device) {
  const Bundle bundle = openBundle(app);
  if (bundle.identifier.empty() || bundle.identifier.front() == '.' ||
      bundle.identifier.find('/') != std::string::npos) {
    throw Failure(kBadInput, app.string() + " cannot be installed: its CFBundleIdentifier is " +
                                 (bundle.identifier.empty() ? "missing" : "\"" + bundle.identifier + "\""));
  }
  const fs::path installed = device / "Apps" / bundle.identifier;
  try {
    fs::create_directories(installed);
    for (const fs::path& old : entriesOf(installed)) {
      if (old.filename() != kDocuments) {
        removeTree(old);
      }
    }
    for (const fs::path& entry : entriesOf(bundle.folder)) {
      if (entry.filename() != kDocuments) {
        fs::copy(entry, installed / entry.filename(), fs::copy_options::recursive | fs::copy_options::copy_symlinks);
      }
    }
  } catch (const std::exception& error) {
    throw Failure(kCannotStart, "cannot install " + bundle.name() + " on the device: " + error.what());
  }
}

std::optional<fs::path> installedExtension(const fs::path& device, const std::string& identifier) {
  for (const fs::path& app : entriesOf(device / "Apps")) {
    for (const fs::path& plugIn : entriesOf(app / "PlugIns")) {
      if (plugIn.extension() != ".appex") {
        continue;
      }
      try {
        if (const Bundle bundle = openBundle(plugIn); bundle.identifier == identifier) {
          return bundle.folder / bundle.executable;
        }
      } catch (const Failure&) {
        // What cannot be run is nobody's extension.
      }
    }
  }
  return std::nullopt;
}

} // namespace qvdevice
