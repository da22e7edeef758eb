#pragma once

#include "../platform/objc/method.hpp"

namespace qvsb {

/// The three steps of the wipe, class methods of ZorbelUtil: `_cleanUpKeychain`, `_cleanUpPreferences` and
/// `_cleanUpFileSystem`. None needs the one before it, and each goes on after what it cannot remove: it is logged where
/// it is a file. Main thread.
extern const Category ZorbelUtilWipe;

} // namespace qvsb
