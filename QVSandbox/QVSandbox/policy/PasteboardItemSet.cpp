#include "PasteboardItemSet.hpp"

#include <algorithm>

#include "../platform/Foundation/NSData.hpp"
#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/Foundation/NSFastEnumeration.hpp"

namespace qvsb {

namespace {

/// Values that differ only deeper down are told apart by comparing them.
constexpr int kDeepest = 4;

/// Spreads whatever differs over all bits.
constexpr NSUInteger mixed(NSUInteger value) {
  value ^= value >> 32;
  value *= 0x9e3779b97f4a7c15u;
  return value ^ value >> 29;
}

NSUInteger hashOfData(NSData data) {
  // Foundation's hash is of the first bytes, which the pictures of one camera have in common. Their lengths and their
  // ends differ.
  const NSUInteger length = data.length();
  NSUInteger hash = mixed(data.hash() ^ mixed(length));
  unsigned char end[32];
  const NSUInteger count = std::min<NSUInteger>(sizeof end, length);
  data.getBytes_range(static_cast<void*>(end), NSRange{length - count, count});
  for (NSUInteger i = 0; i < count; ++i) {
    hash = mixed(hash + end[i]);
  }
  return hash;
}

/// The same for equal values, as Foundation's is, and different for most others, as Foundation's is not for
/// collections.
NSUInteger hashOfValue(NSObject value, int depth) {
  if (depth <= kDeepest && value.isKindOfClass(NSDictionary::classObject())) {
    NSUInteger hash = 1;
    forEach(value, [&](Object key) {
      // A sum, because equal dictionaries need not have their keys in the same order.
      const auto entry = NSObject::from(NSDictionary::from(value).objectForKey(key));
      hash += mixed(NSObject::from(key).hash() ^ mixed(hashOfValue(entry, depth + 1)));
    });
    return hash;
  }
  if (depth <= kDeepest && value.isKindOfClass(NSArray::classObject())) {
    NSUInteger hash = 2;
    forEach(value, [&](Object entry) { hash = mixed(hash + hashOfValue(NSObject::from(entry), depth + 1)); });
    return hash;
  }
  if (value.isKindOfClass(NSData::classObject())) {
    return hashOfData(NSData::from(value));
  }
  return value.hash();
}

} // namespace

NSUInteger PasteboardItemSet::hashOf(NSObject item) { return mixed(hashOfValue(item, 0)); }

const PasteboardItemSet::Slot& PasteboardItemSet::find(NSObject item, NSUInteger hash) const {
  for (std::size_t at = hash;; ++at) {
    const Slot& slot = slots_[at & (slots_.size() - 1)];
    if (slot.item == 0 || (slot.hash == hash && items_[slot.item - 1].isEqual(item))) {
      return slot;
    }
  }
}

void PasteboardItemSet::insert(NSObject item) {
  const NSUInteger hash = hashOf(item);
  const Slot& slot = find(item, hash);
  if (slot.item != 0) {
    return;
  }
  items_.push_back(item);
  slots_[static_cast<std::size_t>(&slot - slots_.data())] = Slot{hash, items_.size()};
  if (items_.size() * 2 > slots_.size()) {
    grow();
  }
}

void PasteboardItemSet::grow() {
  std::vector<Slot> larger(slots_.size() * 2);
  for (const Slot& slot : slots_) {
    if (slot.item == 0) {
      continue;
    }
    std::size_t at = slot.hash & (larger.size() - 1);
    while (larger[at].item != 0) {
      at = (at + 1) & (larger.size() - 1);
    }
    larger[at] = slot;
  }
  slots_ = std::move(larger);
}

bool operator==(const PasteboardItemSet& left, const PasteboardItemSet& right) {
  return left.size() == right.size() && std::ranges::all_of(left, [&](NSObject item) { return right.contains(item); });
}

} // namespace qvsb
