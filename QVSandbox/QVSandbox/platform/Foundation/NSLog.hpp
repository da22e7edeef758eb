#pragma once

#include "NSString.hpp"

extern "C" void qvsbLog(objc_object* format, ...) QVSB_SYMBOL(NSLog);

namespace qvsb {

/// A line for the platform's own log; arguments are handles, numbers and C strings.
template <class... Tail> void NSLog(NSString format, Tail... tail) {
  qvsbLog(format.raw(), detail::variadicArgument(tail)...);
}

} // namespace qvsb
