// Objective-C's @try, @catch, @finally and @throw for C++ code.
//
// An Objective-C exception unwinds through C++ frames and runs their destructors, so most code needs nothing from here.
// No frame that one may cross is `noexcept`; destructors are, so a `dealloc` that they bring about must not raise. C++
// exceptions do not leave the library.
#pragma once

#include <type_traits>

#include "object.hpp"

namespace qvsb {

namespace detail {
/// `handler` answers whether it dealt with the exception; if not, it goes on.
void tryCatch(void (*body)(void*), void* bodyContext, bool (*handler)(void*, id), void* handlerContext);
void tryFinally(void (*body)(void*), void* bodyContext, void (*cleanup)(void*), void* cleanupContext);

template <class F> void callThrough(void* function) { (*static_cast<std::remove_reference_t<F>*>(function))(); }
template <class F> void* contextOf(F& function) { return const_cast<void*>(static_cast<const void*>(&function)); }
} // namespace detail

/// Runs `body`; an Objective-C exception that it raises goes to `handler(Object)`, which answers whether it dealt with
/// it. One that it did not deal with goes on unchanged.
template <class Body, class Handler> void tryCatch(Body&& body, Handler&& handler) {
  detail::tryCatch(
      &detail::callThrough<Body>, detail::contextOf(body),
      [](void* context, id exception) -> bool {
        return (*static_cast<std::remove_reference_t<Handler>*>(context))(Object(exception));
      },
      detail::contextOf(handler));
}

/// Runs `body`, then `cleanup` in any case; an exception of `body` goes on afterwards.
template <class Body, class Cleanup> void tryFinally(Body&& body, Cleanup&& cleanup) {
  detail::tryFinally(&detail::callThrough<Body>, detail::contextOf(body), &detail::callThrough<Cleanup>,
                     detail::contextOf(cleanup));
}

/// Objective-C's `@throw`. The exception is retained by the runtime for as long as it is under way.
[[noreturn]] void throwObject(Object exception);

} // namespace qvsb
