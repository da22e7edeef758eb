#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Bytes.h"

namespace qvwrap {

/// A property list, of either kind, with a dictionary at its root; or a dictionary in one.
class PropertyList {
public:
  /// Throws Failure; its sentence begins with `what`.
  PropertyList(View content, const std::string& what);

  /// The string at `key`; empty when there is none.
  std::string text(const char* key) const;
  /// The strings of the array at `key`; empty when there is none.
  std::vector<std::string> texts(const char* key) const;
  /// The dictionaries of the array at `key`; empty when there is none.
  std::vector<PropertyList> dictionaries(const char* key) const;

private:
  PropertyList(std::shared_ptr<void> root, void* node) : root_(std::move(root)), node_(node) {}

  std::shared_ptr<void> root_;
  void* node_;
};

} // namespace qvwrap
