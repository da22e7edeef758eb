#pragma once

#include <filesystem>
#include <string>

namespace qvdevice {

/// An app as its maker delivers it: a folder with an Info.plist and the executable that it names.
struct Bundle {
  std::filesystem::path folder;
  std::string executable;
  std::string identifier;
  std::string version;

  /// The folder's name without ".app".
  std::string name() const { return folder.stem().string(); }
};

/// Checks the folder. Throws Failure with a sentence that says what is wrong with it.
Bundle openBundle(const std::filesystem::path& folder);

/// The text under `key` of a property list's outermost dictionary; empty when there is none. Throws Failure when the
/// file is no property list.
std::string plistText(const std::filesystem::path& file, const char* key);

} // namespace qvdevice
