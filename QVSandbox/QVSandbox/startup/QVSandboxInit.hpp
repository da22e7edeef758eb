// What happens when the library is loaded, before the host app's `main`.
#pragma once

#include "../platform/objc/target.hpp"

/// The library's initialiser, run by the platform's loader after the library's methods are in place.
/// Announces the library, removes a configuration file that an earlier version left behind, installs every hook and
/// creates the SDK object. A step that fails is logged; the others run all the same.
QVSB_EXPORT void QVSandboxInit();
