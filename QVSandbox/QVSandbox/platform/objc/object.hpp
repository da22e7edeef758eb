// Handles. `NSString`, `UIApplication` and the like are values around one object pointer, borrowed, never owning (see
// ownership.hpp). Nil is legal and false. A handle travels in a register like the pointer itself, which is what lets
// a C++ function with handles in its signature be a method's implementation.
#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>

#include "runtime.hpp"

namespace qvsb {

class Object {
public:
  constexpr Object() = default;
  constexpr Object(std::nullptr_t) {}
  constexpr explicit Object(id object) : object_(object) {}

  constexpr explicit operator bool() const { return object_ != nullptr; }
  constexpr id raw() const { return object_; }

  /// Identity, as `==` between pointers; `isEqual` of NSObject compares values.
  friend constexpr bool operator==(Object left, Object right) { return left.object_ == right.object_; }

private:
  id object_ = nullptr;
};

template <class T>
concept Handle = std::derived_from<T, Object>;

/// A class, which is an object too: messages to it are class methods.
class Class : public Object {
public:
  using Object::Object;
  explicit Class(objc_class* cls) : Object(reinterpret_cast<id>(cls)) {}

  objc_class* rawClass() const { return reinterpret_cast<objc_class*>(raw()); }
  const char* name() const { return class_getName(rawClass()); }
};

/// The class of `object`, nil for nil.
inline Class classOf(Object object) { return Class(object ? object_getClass(object.raw()) : nullptr); }

static_assert(sizeof(Object) == sizeof(void*) && std::is_trivially_copyable_v<Object>);
static_assert(sizeof(Class) == sizeof(void*) && std::is_trivially_copyable_v<Class>);

} // namespace qvsb
