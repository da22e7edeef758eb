#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "MachO.h"

namespace qvwrap {

struct FrameworkFile {
  std::string path; // in the framework
  Bytes content;
  bool executable = false;
};

/// QVSandbox.framework, as it goes into an app.
struct Framework {
  std::vector<FrameworkFile> files; // in the order of their paths
  std::vector<std::string> folders; // in it, each before what it holds
  std::vector<Slice> slices;
  std::string version;

  /// How an app names its library.
  const LibraryCommand& library() const { return *slices.front().ownName; }
  /// The libraries that it expects in the app's Frameworks: "Zorbel.framework/Zorbel".
  std::vector<std::string> companions() const;
};

/// Reads a framework, or that one of an xcframework which is made for `platform`. Throws Failure.
Framework readFramework(const std::filesystem::path& path, std::uint32_t platform);

/// Throws Failure unless the framework has, for each 64-bit part of an executable, one for the same architecture and
/// platform.
void refuseUnlessFitting(const Framework& framework, const std::vector<Slice>& executable);

} // namespace qvwrap
