#include "AppFolder.h"

#include <algorithm>

#include "Failure.h"
#include "Files.h"

namespace fs = std::filesystem;

namespace qvwrap {

namespace {

void write(const Framework& framework, const fs::path& root) {
  fs::create_directory(root);
  for (const std::string& folder : framework.folders) {
    fs::create_directory(root / folder);
  }
  for (const FrameworkFile& file : framework.files) {
    createFile(root / file.path, file.content, file.executable);
  }
  for (const std::string& folder : framework.folders) {
    syncFolder(root / folder);
  }
  syncFolder(root);
}

/// The framework in its place, until it is let go: gone again when what follows fails.
class Placed {
public:
  Placed(const Framework& framework, const fs::path& app, bool addFolder)
      : parent_(app / "Frameworks"), place_(app / kFrameworkFolder), addedFolder_(addFolder) {
    if (addFolder) {
      fs::create_directory(parent_);
    }
    try {
      const TemporaryFolder staging(parent_);
      write(framework, staging.path() / place_.filename());
      fs::rename(staging.path() / place_.filename(), place_);
      placed_ = true;
      syncFolder(parent_);
    } catch (...) {
      undo();
      throw;
    }
  }
  ~Placed() { undo(); }
  Placed(const Placed&) = delete;
  Placed& operator=(const Placed&) = delete;

  void letGo() { placed_ = addedFolder_ = false; }

private:
  void undo() {
    std::error_code ignored;
    if (placed_) {
      fs::remove_all(place_, ignored);
    }
    if (addedFolder_) {
      fs::remove(parent_, ignored);
    }
  }

  fs::path parent_;
  fs::path place_;
  bool addedFolder_;
  bool placed_ = false;
};

} // namespace

AppFolder::AppFolder(fs::path path) : path_(std::move(path)) {
  if (!fs::exists(fs::symlink_status(path_ / "Info.plist"))) {
    throw Failure(kRefused, "it is no app: it holds no Info.plist");
  }
  executableName_ = executableNameIn(readFile(path_ / "Info.plist"));
  if (!fs::exists(fs::symlink_status(path_ / executableName_))) {
    throw Failure(kRefused, "it does not hold its executable, " + executableName_);
  }
  const fs::file_status frameworks = fs::symlink_status(path_ / "Frameworks");
  if (fs::exists(frameworks) && !fs::is_directory(frameworks)) {
    throw Failure(kRefused, "its Frameworks is no folder");
  }
  executable_ = readFile(path_ / executableName_);
}

bool AppFolder::holds(const std::string& path) const { return fs::exists(fs::symlink_status(path_ / path)); }

std::optional<Bytes> AppFolder::content(const std::string& path) const {
  return holds(path) ? std::optional(readFile(path_ / path)) : std::nullopt;
}

std::vector<std::string> AppFolder::extensions() const {
  std::vector<std::string> found;
  for (const char* folder : {"PlugIns", "Extensions", "Watch"}) {
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(path_ / folder, none)) {
      if (entry.path().extension() == ".appex" || entry.path().extension() == ".app") {
        found.push_back(fs::path(folder) / entry.path().filename());
      }
    }
  }
  std::ranges::sort(found);
  return found;
}

void AppFolder::put(View executable, const Framework& framework, bool addFolder) {
  try {
    Placed placed(framework, path_, addFolder);
    replaceExecutable(executable);
    placed.letGo();
  } catch (const fs::filesystem_error& error) {
    throw Failure(kCannotWrite, error.path1().string() + " cannot be written: " + error.code().message());
  }
}

App::Taken AppFolder::take(View executable, bool removeFolder) {
  // In this order: an executable never asks for a framework that is not there.
  replaceExecutable(executable);
  try {
    if (holds(kFrameworkFolder)) {
      const TemporaryFolder bin(path_ / "Frameworks");
      fs::rename(path_ / kFrameworkFolder, bin.path() / "QVSandbox.framework");
    }
    if (removeFolder && holds("Frameworks") && fs::is_empty(path_ / "Frameworks")) {
      fs::remove(path_ / "Frameworks");
    }
  } catch (const fs::filesystem_error& error) {
    throw Failure(kCannotWrite, "its executable is as it was, but " + error.path1().string() +
                                    " cannot be removed: " + error.code().message());
  }
  return Taken::kAsBefore;
}

void AppFolder::replaceExecutable(View executable) const {
  const fs::path file = path_ / executableName_;
  replaceFile(file, [&](int descriptor) { writeAll(descriptor, executable, file); });
}

} // namespace qvwrap
