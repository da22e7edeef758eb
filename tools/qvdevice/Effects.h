#pragma once

#include <filesystem>
#include <optional>

namespace qvdevice {

struct EffectsOptions {
  /// A PNG; without one the program's own picture is shown.
  std::optional<std::filesystem::path> image;
  /// A file of this name is replaced. Without a name it is IMAGE-effects.png in the working folder, and must be new.
  std::optional<std::filesystem::path> output;
  /// Says what was written as a JSON object.
  bool json = false;
};

/// Writes the library's looks of an image beside the original. Throws a Failure.
int effects(const EffectsOptions& options);

} // namespace qvdevice
