// What the passcode extension is asked.
#pragma once

#include "../platform/Foundation/NSData.hpp"
#include "../platform/Foundation/NSExtensionItem.hpp"

namespace qvsb {

/// Adds the host app's name, icon and bundle identifier; what there is not is left out.
void addAppIdentity(NSMutableDictionary request, NSData icon);

/// The request as the extension gets it: an item with the dictionary as its one attachment. Autoreleased.
NSExtensionItem requestItem(NSMutableDictionary request);

} // namespace qvsb
