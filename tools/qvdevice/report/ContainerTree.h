#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

#include "Markup.h"

namespace qvdevice {

/// What lies in an app's container at one moment.
class ContainerTree {
public:
  struct Entry {
    bool folder = false;
    std::string protection; // the class stored with the item; empty when it has none of its own
    std::int64_t changed = 0;
  };

  ContainerTree() = default;
  /// Looks at all that lies there, but not into the app's own bundle. What cannot be looked into is left out.
  explicit ContainerTree(const std::filesystem::path& container);

  const std::map<std::string, Entry>& entries() const { return entries_; }

private:
  std::map<std::string, Entry> entries_;
};

/// How a container has changed between two moments: a table with a row for each item, folders above what they hold.
/// `defaultProtection` is what an item has that has no class of its own.
class ContainerChange {
public:
  ContainerChange(const ContainerTree& before, const ContainerTree& after, std::string defaultProtection);

  /// "21 new, 3 written, 2 gone".
  std::string summary() const;
  Markup table(const std::string& caption) const;
  int gone() const { return gone_; }

private:
  enum class Change { kNone, kNew, kWritten, kClass, kGone };
  struct Row {
    std::string path;
    const ContainerTree::Entry* before;
    const ContainerTree::Entry* after;
    Change change;
  };

  Markup row(const Row& row) const;
  Markup protection(const ContainerTree::Entry* entry) const;

  ContainerTree before_;
  ContainerTree after_;
  std::string defaultProtection_;
  std::vector<Row> rows_;
  int new_ = 0;
  int written_ = 0;
  int gone_ = 0;
};

} // namespace qvdevice
