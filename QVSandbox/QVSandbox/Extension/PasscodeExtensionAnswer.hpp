// What the passcode extension answers, and what the SDK is told of it.
#pragma once

#include "../platform/Foundation/NSArray.hpp"
#include "../platform/Foundation/NSDictionary.hpp"
#include "../platform/Foundation/NSError.hpp"

namespace qvsb {

/// The result for the SDK, logged on the way. Autoreleased. Raises when an answer that says that the user passed lacks
/// what goes with it.
NSDictionary passcodeExtensionResult(BOOL completed, NSArray returnedItems, NSError error);

} // namespace qvsb
