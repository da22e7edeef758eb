#include "PropertyList.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace qvcheck {

PropertyList::PropertyList(const std::string& path) : root_(nullptr, &plist_free) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    throw std::runtime_error(path + ": cannot be opened");
  }
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  plist_t root = nullptr;
  plist_from_memory(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
  root_.reset(root);
  if (!root || plist_get_node_type(root) != PLIST_DICT) {
    throw std::runtime_error(path + ": holds no property list that is a dictionary");
  }
}

static std::optional<std::string> textOf(plist_t node) {
  if (!node || plist_get_node_type(node) != PLIST_STRING) {
    return std::nullopt;
  }
  char* value = nullptr;
  plist_get_string_val(node, &value);
  const std::unique_ptr<char, void (*)(void*)> owned(value, &std::free);
  return std::string(value ? value : "");
}

std::optional<std::string> PropertyList::text(plist_t dictionary, const std::string& key) {
  return textOf(plist_dict_get_item(dictionary, key.c_str()));
}

std::vector<std::string> PropertyList::texts(plist_t dictionary, const std::string& key) {
  std::vector<std::string> out;
  plist_t array = plist_dict_get_item(dictionary, key.c_str());
  if (array && plist_get_node_type(array) == PLIST_ARRAY) {
    for (uint32_t i = 0; i < plist_array_get_size(array); ++i) {
      out.push_back(textOf(plist_array_get_item(array, i)).value_or(""));
    }
  }
  return out;
}

std::vector<PropertyList::Item> PropertyList::items(const std::string& key) const {
  std::vector<Item> out;
  plist_t array = plist_dict_get_item(root_.get(), key.c_str());
  if (array && plist_get_node_type(array) == PLIST_ARRAY) {
    for (uint32_t i = 0; i < plist_array_get_size(array); ++i) {
      plist_t item = plist_array_get_item(array, i);
      if (plist_get_node_type(item) == PLIST_DICT) {
        out.emplace_back(item);
      }
    }
  }
  return out;
}

} // namespace qvcheck
