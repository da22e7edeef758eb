#pragma once

#include "../platform/objc/method.hpp"

namespace qvsb {

/// The three steps of the wipe, class methods of ZorbelUtil.
extern const Category ZorbelUtilWipe;

} // namespace qvsb
