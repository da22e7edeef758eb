// Going through a collection of any class: `anyOf(list, [](Object entry) { return ...; })`.
#pragma once

#include <iterator>

#include "NSObject.hpp"

namespace qvsb {

/// What a collection and its enumeration tell each other, in the platform's layout.
struct NSFastEnumerationState {
  unsigned long state;
  id* itemsPtr;
  unsigned long* mutationsPtr;
  unsigned long extra[5];
};

/// A collection as the protocol of that name sees it: an array, a set or anything else that can be gone through.
class NSFastEnumeration : public NSObject {
  QVSB_HANDLE(NSFastEnumeration, NSObject)

  NSUInteger countByEnumeratingWithState(NSFastEnumerationState* state, id* buffer, NSUInteger count) const {
    return Message<NSUInteger(void*, void*, NSUInteger)>::send(*this, "countByEnumeratingWithState:objects:count:"_sel,
                                                               state, static_cast<void*>(buffer), count);
  }
};

/// Whether `test` is true of an entry; asked in the collection's own order, and no more after the first. `test` must
/// not change the collection. Something that cannot be gone through has no entries.
template <class Test> bool anyOf(NSObject collection, Test&& test) {
  if (!collection.respondsToSelector("countByEnumeratingWithState:objects:count:"_sel)) {
    return false;
  }
  NSFastEnumerationState state{};
  id buffer[16];
  while (const NSUInteger count =
             NSFastEnumeration::from(collection).countByEnumeratingWithState(&state, buffer, std::size(buffer))) {
    for (NSUInteger i = 0; i < count; ++i) {
      if (test(Object(state.itemsPtr[i]))) {
        return true;
      }
    }
  }
  return false;
}

/// Calls `work` with every entry, in the collection's own order. `work` must not change the collection.
template <class Work> void forEach(NSObject collection, Work&& work) {
  anyOf(collection, [&](Object entry) {
    work(entry);
    return false;
  });
}

} // namespace qvsb
