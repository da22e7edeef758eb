// Sending messages. The one place that knows how each runtime dispatches.
//
// A message to nil calls nothing and gives zero of its result type: that is promised here, not left to the runtime
// (with GCC's, a nil receiver's double is whatever the register held).
#pragma once

#include "encoding.hpp"
#include "object.hpp"
#include "selector.hpp"
#include "verify.hpp"

// Debug builds compare every send's signature with the receiver's method.
#if !defined(QVSB_CHECK_SENDS)
#if defined(NDEBUG)
#define QVSB_CHECK_SENDS 0
#else
#define QVSB_CHECK_SENDS 1
#endif
#endif

namespace qvsb {

namespace detail {

// SAFETY of the casts below: the function is called through `Function`, which callers derive from the signature that
// the selector has; debug builds check it against the method's encoding first.
template <class R, class Function> inline Function dispatcher([[maybe_unused]] id receiver, [[maybe_unused]] SEL sel) {
#if QVSB_APPLE_RUNTIME
#if defined(__x86_64__)
  if constexpr (returnsInMemory<R>()) {
    return reinterpret_cast<Function>(&objc_msgSend_stret);
  }
#endif
  return reinterpret_cast<Function>(&objc_msgSend);
#else
  return reinterpret_cast<Function>(objc_msg_lookup(receiver, sel.raw));
#endif
}

/// What a handle becomes among variadic arguments, where no class type may go.
template <class T> inline auto variadicArgument(T value) {
  if constexpr (Handle<T>) {
    return value.raw();
  } else if constexpr (std::is_same_v<T, SEL>) {
    return value.raw;
  } else {
    return value;
  }
}

} // namespace detail

/// A message of a known signature: `Message<BOOL(NSString, BOOL)>::send(data, "writeToFile:atomically:"_sel, path,
/// YES)`. Arguments convert to the declared types.
template <class Signature> struct Message;

template <class R, class... A> struct Message<R(A...)> {
  static R send(Object receiver, SEL selector, A... arguments) {
    if (!receiver) [[unlikely]] {
      return R();
    }
#if QVSB_CHECK_SENDS
    checkSend(receiver, selector, methodEncoding<R, A...>());
#endif
    return sendUnchecked(receiver, selector, arguments...);
  }

  /// Without the debug check; for what the check itself sends.
  static R sendUnchecked(Object receiver, SEL selector, A... arguments) {
    using Function = R (*)(id, SEL, A...);
    return detail::dispatcher<R, Function>(receiver.raw(), selector)(receiver.raw(), selector, arguments...);
  }

  /// To the implementation above `current`, the class whose method is running.
  static R sendSuper(Object receiver, Class current, SEL selector, A... arguments) {
    if (!receiver) [[unlikely]] {
      return R();
    }
    objc_super super{receiver.raw(), class_getSuperclass(current.rawClass())};
#if QVSB_APPLE_RUNTIME
    using Function = R (*)(objc_super*, SEL, A...);
#if defined(__x86_64__)
    if constexpr (detail::returnsInMemory<R>()) {
      return reinterpret_cast<Function>(&objc_msgSendSuper_stret)(&super, selector, arguments...);
    }
#endif
    return reinterpret_cast<Function>(&objc_msgSendSuper)(&super, selector, arguments...);
#else
    using Function = R (*)(id, SEL, A...);
    const auto function = reinterpret_cast<Function>(objc_msg_lookup_super(&super, selector.raw));
    return function(receiver.raw(), selector, arguments...);
#endif
  }
};

/// A message with a variable tail: `VariadicMessage<void(NSInteger, NSString)>::send(...)`. The function type must be
/// truly variadic: on Apple's arm64 such arguments travel on the stack.
template <class Signature> struct VariadicMessage;

template <class R, class... Fixed> struct VariadicMessage<R(Fixed...)> {
  template <class... Tail> static R send(Object receiver, SEL selector, Fixed... fixed, Tail... tail) {
    if (!receiver) [[unlikely]] {
      return R();
    }
#if QVSB_CHECK_SENDS
    checkSend(receiver, selector, methodEncoding<R, Fixed...>());
#endif
    using Function = R (*)(id, SEL, Fixed..., ...);
    return detail::dispatcher<R, Function>(receiver.raw(), selector)(receiver.raw(), selector, fixed...,
                                                                     detail::variadicArgument(tail)...);
  }
};

/// The short form, whose argument types are those given: `send<BOOL>(self, "sb_writeToFile:atomically:"_sel, path,
/// YES)`.
template <class R, class... A> inline R send(Object receiver, SEL selector, A... arguments) {
  return Message<R(A...)>::send(receiver, selector, arguments...);
}

} // namespace qvsb
