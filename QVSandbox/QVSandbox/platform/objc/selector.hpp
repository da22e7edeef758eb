// Selectors. `"writeToFile:atomically:"_sel` is registered with the runtime the first time it runs, once per text.
#pragma once

#include <atomic>
#include <type_traits>

#include "fixed_string.hpp"
#include "runtime.hpp"

namespace qvsb {

/// A method's name. Equality is the runtime's own: GCC's keeps several pointers for one name.
struct SEL {
  objc_selector* raw = nullptr;

  explicit operator bool() const { return raw != nullptr; }
  const char* name() const { return raw ? sel_getName(raw) : "<null selector>"; }
  friend bool operator==(SEL left, SEL right) {
    return left.raw == right.raw || (left.raw && right.raw && sel_isEqual(left.raw, right.raw));
  }
};

static_assert(sizeof(SEL) == sizeof(void*) && std::is_trivially_copyable_v<SEL>);

/// Registers `name`, or finds it; the runtime keeps a copy of the text.
inline SEL selector(const char* name) { return SEL{sel_registerName(name)}; }

namespace detail {
template <FixedString Name> inline constinit std::atomic<objc_selector*> selectorCache{nullptr};
}

/// Relaxed is enough: what the pointer leads to was complete before any thread could get it from the runtime's locked
/// table, and every thread that finds null asks that table itself.
template <FixedString Name> inline SEL operator""_sel() {
  objc_selector* cached = detail::selectorCache<Name>.load(std::memory_order_relaxed);
  if (!cached) [[unlikely]] {
    cached = sel_registerName(Name.text);
    detail::selectorCache<Name>.store(cached, std::memory_order_relaxed);
  }
  return SEL{cached};
}

} // namespace qvsb
