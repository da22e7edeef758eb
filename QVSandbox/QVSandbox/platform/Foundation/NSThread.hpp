#pragma once

#include "NSArray.hpp"

namespace qvsb {

class NSThread : public NSObject {
  QVSB_HANDLE(NSThread, NSObject)

  /// NSNumbers, innermost first: at index 0 the address to which this message returns, at index 1 the one to which the
  /// function returns that stands in the code as the caller of this one. Inlined into it and sent without the usual
  /// helpers, in debug builds too, because a frame in between would shift everything.
  [[gnu::always_inline]] static NSArray callStackReturnAddresses() {
    using Function = NSArray (*)(id, SEL);
    const Class cls = classObject();
    const SEL selector = "callStackReturnAddresses"_sel;
    // SAFETY: the method's own signature.
    return detail::dispatcher<NSArray, Function>(cls.raw(), selector)(cls.raw(), selector);
  }
};

} // namespace qvsb
