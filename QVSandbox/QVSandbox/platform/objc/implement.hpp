// C++ classes that are Objective-C classes. One C++ class holds an Objective-C class's state and methods:
//
//   class Counter : public Implements<Counter> {
//   public:
//     static constexpr const char* className = "QVCounter";
//     static constexpr const char* superclassName = "NSObject";
//     long add(long step) { return value_ += step; }
//     static constexpr MethodEntry instanceMethods[] = {member<&Counter::add>("add:")};
//   private:
//     long value_ = 0;
//   };
//   registerClass<Counter>();
//
// It lives inside the instance: built when the instance is allocated, before `init`, destroyed when it is deallocated.
// Members are therefore C++ values with constructors and destructors. Optional: `instanceMethods`, `classMethods` (made
// with method<>), `protocols`, and `void dealloc()`, which runs before the state is destroyed (never call the
// superclass's there).
#pragma once

#include <new>
#include <span>

#include "method.hpp"
#include "send.hpp"

namespace qvsb {

namespace detail {

struct ClassRecipe {
  const char* className;
  const char* superclassName;
  unsigned long stateSize;
  std::span<const MethodEntry> lifeCycle;  // `dealloc`
  std::span<const MethodEntry> allocation; // `allocWithZone:`, on the metaclass
  std::span<const MethodEntry> instanceMethods;
  std::span<const MethodEntry> classMethods;
  std::span<const char* const> protocols;
};

/// Registers the class and gives it with the state's offset. Raises, with a sentence, when the name is taken, or when
/// the superclass is missing or has a method of the same name with another signature; nothing is registered then.
Class registerClass(const ClassRecipe& recipe, long& stateOffset);

template <class State> inline constinit long stateOffset = 0;
template <class State> inline constinit objc_class* stateClass = nullptr;

template <class State> State& stateOf(id object) {
  return *reinterpret_cast<State*>(reinterpret_cast<char*>(object) + stateOffset<State>);
}

template <class State> Object allocWithZone(Class self, SEL selector, void* zone) {
  const Class metaclass = classOf(Class(stateClass<State>));
  const Object object = Message<Object(void*)>::sendSuper(self, metaclass, selector, zone);
  if (object) {
    new (&stateOf<State>(object.raw())) State();
  }
  return object;
}

template <class State> void dealloc(Object self, SEL selector) {
  auto& state = stateOf<State>(self.raw());
  if constexpr (requires { state.dealloc(); }) {
    state.dealloc();
  }
  state.~State();
  Message<void()>::sendSuper(self, Class(stateClass<State>), selector);
}

template <auto Member> struct MemberMethod;
template <class State, class R, class... A, R (State::*Member)(A...)> struct MemberMethod<Member> {
  static R call(Object self, SEL, A... arguments) { return (stateOf<State>(self.raw()).*Member)(arguments...); }
};
template <class State, class R, class... A, R (State::*Member)(A...) const> struct MemberMethod<Member> {
  static R call(Object self, SEL, A... arguments) { return (stateOf<State>(self.raw()).*Member)(arguments...); }
};

} // namespace detail

/// An instance method from a member function of a class that is an Implements<>.
template <auto Member> consteval MethodEntry member(const char* selector) {
  return method<&detail::MemberMethod<Member>::call>(selector);
}

/// The base of a C++ class that is an Objective-C class.
template <class State> class Implements {
public:
  // NOLINTNEXTLINE(bugprone-crtp-constructor-accessibility): it is deleted, and says so most clearly here
  Implements(const Implements&) = delete;
  Implements& operator=(const Implements&) = delete;

  /// The C++ side of an instance; `object` must be one, or of a subclass.
  static State& of(Object object) { return detail::stateOf<State>(object.raw()); }
  static Class classObject() { return Class(detail::stateClass<State>); }

protected:
  /// The Objective-C side of this instance.
  template <class T = Object> T self() const {
    const auto* state = static_cast<const State*>(this);
    return T(
        reinterpret_cast<id>(const_cast<char*>(reinterpret_cast<const char*>(state)) - detail::stateOffset<State>));
  }

  /// `[super selector...]` from within a method of this class.
  template <class R, class... A> R super(SEL selector, A... arguments) const {
    return Message<R(A...)>::sendSuper(self(), classObject(), selector, arguments...);
  }

private:
  // Nobody but the class itself is built on it.
  friend State;
  Implements() = default;
  ~Implements() = default;
};

/// Makes the class known to the runtime; once, at load. A second call changes nothing.
template <class State> Class registerClass() {
  static_assert(alignof(State) <= alignof(void*), "instances are aligned for pointers");
  if (detail::stateClass<State>) {
    return Class(detail::stateClass<State>);
  }
  static constexpr MethodEntry lifeCycle[] = {method<&detail::dealloc<State>>("dealloc")};
  static constexpr MethodEntry allocation[] = {method<&detail::allocWithZone<State>>("allocWithZone:")};
  detail::ClassRecipe recipe{State::className, State::superclassName, sizeof(State), lifeCycle, allocation, {}, {}, {}};
  if constexpr (requires { State::instanceMethods; }) {
    recipe.instanceMethods = State::instanceMethods;
  }
  if constexpr (requires { State::classMethods; }) {
    recipe.classMethods = State::classMethods;
  }
  if constexpr (requires { State::protocols; }) {
    recipe.protocols = State::protocols;
  }
  const Class cls = detail::registerClass(recipe, detail::stateOffset<State>);
  detail::stateClass<State> = cls.rawClass();
  return cls;
}

} // namespace qvsb
