#pragma once

#include <objc/objc.h>

namespace qvdevice {

/// True when `object`, or one whose address hashes alike, has weak references. Cheap enough to ask at every
/// deallocation.
bool mayHaveWeakReferences(id object);

/// Makes every weak reference to `object` nil.
void clearWeakReferences(id object);

} // namespace qvdevice
