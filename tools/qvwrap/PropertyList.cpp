#include "PropertyList.h"

#include <cstdlib>
#include <limits>

#include <plist/plist.h>

#include "Failure.h"

namespace qvwrap {

static std::string stringOf(plist_t node) {
  if (node == nullptr || plist_get_node_type(node) != PLIST_STRING) {
    return {};
  }
  char* value = nullptr;
  plist_get_string_val(node, &value);
  const std::unique_ptr<char, decltype(&std::free)> owner(value, &std::free);
  return value == nullptr ? std::string() : value;
}

/// The array at `key`, or nothing.
static std::vector<plist_t> itemsOf(plist_t dictionary, const char* key) {
  const plist_t array = plist_dict_get_item(dictionary, key);
  if (array == nullptr || plist_get_node_type(array) != PLIST_ARRAY) {
    return {};
  }
  std::vector<plist_t> items;
  for (std::uint32_t i = 0; i < plist_array_get_size(array); ++i) {
    items.push_back(plist_array_get_item(array, i));
  }
  return items;
}

PropertyList::PropertyList(View content, const std::string& what) : node_(nullptr) {
  plist_t root = nullptr;
  if (content.size() <= std::numeric_limits<std::uint32_t>::max()) {
    const std::string_view text = textOf(content);
    plist_from_memory(text.data(), static_cast<std::uint32_t>(text.size()), &root);
  }
  root_ = std::shared_ptr<void>(root, [](plist_t owned) { plist_free(owned); });
  node_ = root;
  if (root == nullptr || plist_get_node_type(root) != PLIST_DICT) {
    throw Failure(kRefused, what + " is not a property list with a dictionary in it");
  }
}

std::string PropertyList::text(const char* key) const { return stringOf(plist_dict_get_item(node_, key)); }

std::vector<std::string> PropertyList::texts(const char* key) const {
  std::vector<std::string> found;
  for (const plist_t item : itemsOf(node_, key)) {
    found.push_back(stringOf(item));
  }
  return found;
}

std::vector<PropertyList> PropertyList::dictionaries(const char* key) const {
  std::vector<PropertyList> found;
  for (const plist_t item : itemsOf(node_, key)) {
    if (plist_get_node_type(item) == PLIST_DICT) {
      found.push_back(PropertyList(root_, item));
    }
  }
  return found;
}

} // namespace qvwrap
