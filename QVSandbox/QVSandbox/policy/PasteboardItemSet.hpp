#pragma once

#include <vector>

#include "../platform/Foundation/NSArray.hpp"
#include "../platform/Foundation/NSObject.hpp"

namespace qvsb {

/// Pasteboard items, equal ones once, in the order in which they came. It borrows them: whoever uses it keeps the
/// arrays that they are from.
///
/// Not Foundation's set: a dictionary's hash there is the number of its keys, which nearly all items have in common, so
/// that a set of ten thousand compares each with each.
class PasteboardItemSet {
public:
  void insert(NSObject item);
  bool contains(NSObject item) const { return find(item, hashOf(item)).item != 0; }

  bool empty() const { return items_.empty(); }
  std::size_t size() const { return items_.size(); }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  /// Whether both hold equal items, whatever their order.
  friend bool operator==(const PasteboardItemSet& left, const PasteboardItemSet& right);

private:
  struct Slot {
    NSUInteger hash = 0;
    /// The item's place in items_, counted from one; 0 in a slot that is free.
    std::size_t item = 0;
  };

  static NSUInteger hashOf(NSObject item);
  /// The slot of an equal item, or the free one where it belongs.
  const Slot& find(NSObject item, NSUInteger hash) const;
  void grow();

  std::vector<NSObject> items_;
  /// A power of two of them, at most half of them taken.
  std::vector<Slot> slots_ = std::vector<Slot>(16);
};

} // namespace qvsb
