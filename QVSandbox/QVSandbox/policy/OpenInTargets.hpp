#pragma once

#include <array>

#include "../platform/Foundation/NSString.hpp"

namespace qvsb {

/// The ways out of the app that the open-in policy is asked about for a share sheet, in the order in which it is.
const std::array<NSString, 19>& openInTargets();

} // namespace qvsb
