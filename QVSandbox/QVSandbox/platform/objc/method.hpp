// C++ functions as Objective-C methods, and categories made of them.
#pragma once

#include <span>
#include <type_traits>

#include "encoding.hpp"

namespace qvsb {

/// One method as data: everything the runtime needs to add it.
struct MethodEntry {
  const char* selector;
  const char* types;
  /// Gives the implementation; a function because a function pointer cannot be cast at compile time.
  IMP (*implementation)();
};

namespace detail {

template <class Function> struct MethodTraits;
template <class R, class Self, class... A> struct MethodTraits<R (*)(Self, SEL, A...)> {
  static_assert(Handle<Self> && sizeof(Self) == sizeof(id), "a method's first argument is its receiver");
  static constexpr std::size_t argumentCount = sizeof...(A);
  static consteval const char* types() { return methodEncoding<R, A...>(); }
};

// SAFETY: `F` is called by the runtime's dispatch with the very signature that `types()` was computed from.
template <auto F> IMP implementationOf() { return reinterpret_cast<IMP>(F); }

consteval std::size_t colons(const char* selector) {
  std::size_t count = 0;
  for (; *selector; ++selector) {
    count += *selector == ':';
  }
  return count;
}

/// Not constexpr, so that reaching it stops the compilation.
inline void selectorAndFunctionDisagreeOnTheNumberOfArguments() {}

} // namespace detail

/// A method from a free function `R f(Receiver self, SEL, A...)`.
template <auto F> consteval MethodEntry method(const char* selector) {
  using Traits = detail::MethodTraits<decltype(F)>;
  if (detail::colons(selector) != Traits::argumentCount) {
    detail::selectorAndFunctionDisagreeOnTheNumberOfArguments();
  }
  return {selector, Traits::types(), &detail::implementationOf<F>};
}

/// What a category adds to a platform class. `name` is for humans; the runtime has no use for it.
struct Category {
  const char* className;
  const char* name;
  std::span<const MethodEntry> instanceMethods;
  std::span<const MethodEntry> classMethods;
};

/// Adds the methods to the class. Nothing happens when the platform lacks the class: whoever then exchanges its methods
/// reports that. A method that the class has itself is not replaced.
void addCategory(const Category& category);

/// Adds `methods` to `cls`; for class methods pass the metaclass.
void addMethods(Class cls, std::span<const MethodEntry> methods);

} // namespace qvsb
