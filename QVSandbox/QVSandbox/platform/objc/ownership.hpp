// Who owns what. A handle borrows; these three own or watch, and are meant as members. The new value is always
// retained before the old one is released, so `head = head->next` is safe. Getters give a borrowed handle.
// An object that dies by their hand must not raise from its `dealloc`: a C++ destructor lets nothing pass.
// None of them locks: like an instance variable, one is read and written on one thread at a time, except that a Weak
// may be read while its object dies on another.
#pragma once

#include <utility>

#include "block.hpp"
#include "send.hpp"

namespace qvsb {

namespace detail {

template <class T> struct Ownership {
  static T retain(T object) { return T(send<Object>(object, "retain"_sel).raw()); }
  static T copy(T object) { return T(send<Object>(object, "copy"_sel).raw()); }
  static void release(T object) {
    if (object) {
      Message<void()>::sendUnchecked(object, "release"_sel);
    }
  }
};

/// A block on the stack is retained by copying it.
template <class Signature> struct Ownership<Block<Signature>> {
  using T = Block<Signature>;
  static T retain(T block) { return T(block ? static_cast<id>(_Block_copy(block.raw())) : nullptr); }
  static T copy(T block) { return retain(block); }
  static void release(T block) {
    if (block) {
      _Block_release(block.raw());
    }
  }
};

} // namespace detail

/// Owns one reference. As a member: Objective-C's `strong`.
template <class T> class Strong {
public:
  constexpr Strong() = default;
  constexpr Strong(std::nullptr_t) {}
  Strong(T object) : object_(detail::Ownership<T>::retain(object)) {}
  Strong(const Strong& other) : Strong(other.object_) {}
  Strong(Strong&& other) noexcept : object_(std::exchange(other.object_, T())) {}
  ~Strong() { detail::Ownership<T>::release(object_); }

  Strong& operator=(Strong other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  /// Takes over a reference that is already ours: the result of `alloc`, `copy`, `new`.
  static Strong adopt(T object) {
    Strong strong;
    strong.object_ = object;
    return strong;
  }
  /// Gives the reference away; the caller releases it.
  [[nodiscard]] T detach() { return std::exchange(object_, T()); }
  /// Gives the reference to the current autorelease pool: what a method returns that made an object.
  T autorelease() { return T(send<Object>(detach(), "autorelease"_sel).raw()); }

  T get() const { return object_; }
  operator T() const { return object_; }
  const T* operator->() const { return &object_; }
  explicit operator bool() const { return static_cast<bool>(object_); }

private:
  T object_;
};

/// Owns a copy of what it is given. As a member: Objective-C's `copy`.
template <class T> class Copied {
public:
  constexpr Copied() = default;
  Copied(T object) : copy_(Strong<T>::adopt(detail::Ownership<T>::copy(object))) {}

  T get() const { return copy_.get(); }
  operator T() const { return copy_.get(); }
  const T* operator->() const { return copy_.operator->(); }
  explicit operator bool() const { return static_cast<bool>(copy_); }

private:
  Strong<T> copy_;
};

/// Watches without owning; nil once the object has begun to die. The runtime knows its address, so it stays where it
/// is.
template <class T> class Weak {
public:
  Weak() { objc_initWeak(&slot_, nullptr); }
  Weak(T object) { objc_initWeak(&slot_, object.raw()); }
  Weak(const Weak& other) : Weak(other.lock().get()) {}
  ~Weak() { objc_destroyWeak(&slot_); }

  Weak& operator=(T object) {
    objc_storeWeak(&slot_, object.raw());
    return *this;
  }
  Weak& operator=(const Weak& other) { return *this = other.lock().get(); }

  /// The object, kept alive for as long as the result is.
  Strong<T> lock() const { return Strong<T>::adopt(T(objc_loadWeakRetained(&slot_))); }
  /// The object, kept alive by the current autorelease pool.
  T get() const { return lock().autorelease(); }

private:
  mutable id slot_ = nullptr;
};

/// An autorelease pool for a scope.
class AutoreleasePool {
public:
  AutoreleasePool() : pool_(objc_autoreleasePoolPush()) {}
  ~AutoreleasePool() { objc_autoreleasePoolPop(pool_); }
  AutoreleasePool(const AutoreleasePool&) = delete;
  AutoreleasePool& operator=(const AutoreleasePool&) = delete;

private:
  void* pool_;
};

/// Objective-C's `@synchronized` for a scope: recursive, one lock for each object.
class Synchronized {
public:
  explicit Synchronized(Object object) : object_(object) { objc_sync_enter(object.raw()); }
  ~Synchronized() { objc_sync_exit(object_.get().raw()); }
  Synchronized(const Synchronized&) = delete;
  Synchronized& operator=(const Synchronized&) = delete;

private:
  Strong<Object> object_; // the lock goes with its object
};

} // namespace qvsb
