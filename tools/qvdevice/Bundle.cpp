#include "Bundle.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>

#include <plist/plist.h>
#include <unistd.h>

#include "Failure.h"

namespace fs = std::filesystem;

namespace qvdevice {

namespace {

using Plist = std::unique_ptr<void, decltype(&plist_free)>;

Plist readPlist(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  if (!stream || !(content << stream.rdbuf())) {
    throw Failure(kNoInput, file.string() + " cannot be read");
  }
  const std::string text = content.str();
  plist_t root = nullptr;
  plist_from_memory(text.data(), static_cast<std::uint32_t>(text.size()), &root);
  if (root == nullptr || plist_get_node_type(root) != PLIST_DICT) {
    plist_free(root);
    throw Failure(kBadInput, file.string() + " is not a property list with a dictionary in it");
  }
  return {root, &plist_free};
}

std::string text(const Plist& plist, const char* key) {
  const plist_t node = plist_dict_get_item(plist.get(), key);
  if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) {
    return {};
  }
  char* value = nullptr;
  plist_get_string_val(node, &value);
  const std::unique_ptr<char, decltype(&std::free)> owner(value, &std::free);
  return value;
}

} // namespace

std::string plistText(const fs::path& file, const char* key) { return text(readPlist(file), key); }

Bundle openBundle(const fs::path& folder) {
  // "Notes.app/" as a shell completes it has an empty last part.
  const fs::path path = folder.has_filename() ? folder : folder.parent_path();
  if (!fs::exists(path)) {
    throw Failure(kNoInput, "there is no app at " + folder.string());
  }
  if (!fs::is_directory(path)) {
    throw Failure(kNoInput, folder.string() + " is not an app: an app is a folder that holds an Info.plist");
  }
  const fs::path info = path / "Info.plist";
  if (!fs::exists(info)) {
    throw Failure(kNoInput, folder.string() + " is not an app: it holds no Info.plist");
  }
  const Plist plist = readPlist(info);
  Bundle bundle{fs::canonical(path), text(plist, "CFBundleExecutable"), text(plist, "CFBundleIdentifier"),
                text(plist, "CFBundleShortVersionString")};
  if (bundle.executable.empty()) {
    throw Failure(kBadInput, info.string() + " names no executable (CFBundleExecutable)");
  }
  if (bundle.executable.find('/') != std::string::npos) {
    throw Failure(kBadInput, info.string() + " names an executable outside the app: " + bundle.executable);
  }
  const fs::path executable = path / bundle.executable;
  if (!fs::is_regular_file(executable)) {
    throw Failure(kNoInput, folder.string() + " does not hold its executable, " + bundle.executable);
  }
  if (access(executable.c_str(), X_OK) != 0) {
    throw Failure(kNoInput, executable.string() + " may not be executed");
  }
  return bundle;
}

} // namespace qvdevice
