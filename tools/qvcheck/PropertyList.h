// An Info.plist, as far as it is read here.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <plist/plist.h>

namespace qvcheck {

class PropertyList {
public:
  /// Throws std::runtime_error with a sentence when the file is missing or holds no dictionary.
  explicit PropertyList(const std::string& path);

  /// The text under `key`, or nothing when there is none.
  std::optional<std::string> text(const std::string& key) const { return text(root_.get(), key); }
  /// The texts of the array under `key`, none when there is no such array.
  std::vector<std::string> texts(const std::string& key) const { return texts(root_.get(), key); }

  /// A dictionary in the array under `key`.
  class Item {
  public:
    explicit Item(plist_t node) : node_(node) {}
    std::optional<std::string> text(const std::string& key) const { return PropertyList::text(node_, key); }
    std::vector<std::string> texts(const std::string& key) const { return PropertyList::texts(node_, key); }

  private:
    plist_t node_;
  };
  std::vector<Item> items(const std::string& key) const;

private:
  static std::optional<std::string> text(plist_t dictionary, const std::string& key);
  static std::vector<std::string> texts(plist_t dictionary, const std::string& key);

  std::unique_ptr<void, void (*)(plist_t)> root_;
};

} // namespace qvcheck
