#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace zorbel {

/// A folder of log files whose names bear a date.
class LogFolder {
public:
  explicit LogFolder(std::filesystem::path path) : path_(std::move(path)) {}

  /// The name with a time, in milliseconds since 1970, behind it.
  static std::string dated(std::string_view name, double milliseconds);

  /// Leaves the newest `kept` files of each name.
  void rotate(std::size_t kept) const;

  /// Makes a new file of that name, whatever is there already; nothing when it cannot be made.
  std::optional<std::filesystem::path> create(const std::string& name) const;

private:
  const std::filesystem::path path_;
};

} // namespace zorbel
