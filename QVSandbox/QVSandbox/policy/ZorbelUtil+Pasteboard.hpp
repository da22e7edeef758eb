#pragma once

#include "../platform/objc/method.hpp"

namespace qvsb {

/// The pasteboard guard, methods of ZorbelUtil.
extern const Category ZorbelUtilPasteboard;

} // namespace qvsb
