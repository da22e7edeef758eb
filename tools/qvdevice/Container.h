#pragma once

#include <filesystem>

namespace qvdevice {

/// A folder that plays the container of one app: made empty, removed with everything in it when this object goes.
class TemporaryContainer {
public:
  /// Makes the folder beneath $TMPDIR or, in a process that lives in a container itself, inside that one: a confined
  /// process could write nowhere else. Throws std::runtime_error with a sentence when that fails.
  TemporaryContainer();
  ~TemporaryContainer();
  TemporaryContainer(const TemporaryContainer&) = delete;
  TemporaryContainer& operator=(const TemporaryContainer&) = delete;

  const std::filesystem::path& path() const { return path_; }

  /// Leaves the folder behind.
  void keep() { kept_ = true; }

private:
  std::filesystem::path path_;
  bool kept_ = false;
};

/// Removes a folder and all that lies beneath it, folders without write permission included. Symbolic links are
/// removed, never followed. Throws std::runtime_error when something is left.
void removeTree(const std::filesystem::path& folder);

} // namespace qvdevice
