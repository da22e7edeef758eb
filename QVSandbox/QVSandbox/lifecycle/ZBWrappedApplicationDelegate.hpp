#pragma once

#include "QVZorbelDelegate.hpp"

namespace qvsb {

/// ZBWrappedApplicationDelegate is never instantiated: it holds the methods that are grafted onto the class of the host
/// app's delegate, where they run with that delegate as `self` and reach its own methods under the `zb_` selectors.
/// Makes the class known to the runtime; once, at load.
Class registerZBWrappedApplicationDelegate();

} // namespace qvsb

/// The process's one QVZorbelDelegate; nil until the host app has finished launching, never released after that. Main
/// thread.
QVSB_EXPORT qvsb::id ZorbelDelegate();
