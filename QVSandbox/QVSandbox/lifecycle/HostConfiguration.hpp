// The SDK's configuration on its way to the host app's delegate, and the delegate's answer on its way back.
#pragma once

#include "../platform/Zorbel/Zorbel.hpp"

namespace qvsb {

/// When the SDK is ready. A delegate that cannot take it is passed over, and the SDK hears nothing.
void giveConfiguration(Zorbel sdk);

/// When it has changed. The SDK hears in any case what became of it.
void giveChangedConfiguration(Zorbel sdk, NSDictionary configuration);

} // namespace qvsb
