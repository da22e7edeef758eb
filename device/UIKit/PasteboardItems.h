// Pasteboard items as apps know them, and as they are kept.
#pragma once

#import <Foundation/Foundation.h>

#include "PasteboardStore.h"

namespace qvdevice {

/// Raises NSInvalidArgumentException in the name of -[UIPasteboard caller] when one is no item.
std::vector<PasteboardItem> encodedItems(NSArray *items, SEL caller);

/// Nil when what was kept makes no sense.
NSArray *itemsFrom(const std::vector<PasteboardItem> &items);

NSSet *setOfTypes(const std::set<std::string> &types);

} // namespace qvdevice
