// The hooks on UIApplication: every delegate that is set, every event that is delivered and every URL that the app
// opens passes here.
#pragma once

#include "../startup/HookGroup.hpp"

namespace qvsb {

extern const HookGroup UIApplicationSandbox;

/// Exchanges the methods, at load. One that cannot be exchanged is logged and stays the platform's; the others are
/// exchanged all the same.
void loadUIApplicationSandbox();

} // namespace qvsb
