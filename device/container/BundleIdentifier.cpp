#include "container/BundleIdentifier.h"

#include <plist/plist.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <system_error>

namespace qvdevice {

std::string bundleIdentifier() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  std::ifstream file(executable.parent_path() / "Info.plist", std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(file), {});
  plist_t root = nullptr;
  if (text.empty()) return {};
  plist_from_memory(text.data(), static_cast<std::uint32_t>(text.size()), &root);
  const std::unique_ptr<void, decltype(&plist_free)> plist(root, &plist_free);
  if (root == nullptr || plist_get_node_type(root) != PLIST_DICT) return {};
  const plist_t node = plist_dict_get_item(root, "CFBundleIdentifier");
  if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) return {};
  char* value = nullptr;
  plist_get_string_val(node, &value);
  const std::unique_ptr<char, decltype(&std::free)> owner(value, &std::free);
  return value;
}

} // namespace qvdevice
