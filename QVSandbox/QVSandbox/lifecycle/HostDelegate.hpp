// The application's delegate, which belongs to the host app: what it has is asked before it is sent anything.
#pragma once

#include "../platform/Foundation/NSObject.hpp"

namespace qvsb {

/// The application's delegate as it is now; nil without one. Owned, because the host may replace it while it is in use.
Strong<NSObject> hostDelegate();

namespace detail {
bool hostAnswers(NSObject host, SEL selector, const char* types);
}

/// Whether the host's object answers to the selector, and with a method of this signature, so that it can be sent.
/// What is behind a proxy is taken at its word.
template <class R, class... A> bool hostAnswers(NSObject host, SEL selector) {
  return detail::hostAnswers(host, selector, methodEncoding<R, A...>());
}

/// Whether the host's object answers to the selector with a method that takes one integer, of whatever width.
bool hostTakesInteger(NSObject host, SEL selector);

} // namespace qvsb
