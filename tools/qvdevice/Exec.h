#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qvdevice {

struct ExecOptions {
  bool keep = false;
  std::optional<std::filesystem::path> device;
  /// Apps to install on the device, for the sake of their extensions and documents.
  std::vector<std::filesystem::path> installed;
  std::vector<std::string> command;
};

/// Runs a program in a container of its own and answers with its exit status, 128+n when signal n ended it,
/// 126 or 127 when it could not be started. Throws Failure for what cannot be a device or be installed.
int exec(const ExecOptions& options);

} // namespace qvdevice
