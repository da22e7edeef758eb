// Finding classes by name.
#pragma once

#include <atomic>

#include "fixed_string.hpp"
#include "object.hpp"

namespace qvsb {

namespace detail {
template <FixedString Name> inline constinit std::atomic<objc_class*> classCache{nullptr};
}

/// The class of that name, or nil. Only a class that was found is remembered: one registered later is found later.
template <FixedString Name> inline Class classNamed() {
  objc_class* cached = detail::classCache<Name>.load(std::memory_order_relaxed);
  if (!cached) [[unlikely]] {
    cached = objc_lookUpClass(Name.text);
    detail::classCache<Name>.store(cached, std::memory_order_relaxed);
  }
  return Class(cached);
}

} // namespace qvsb
