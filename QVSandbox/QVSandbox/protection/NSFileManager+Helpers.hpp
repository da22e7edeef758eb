#pragma once

#include "../platform/Foundation/NSFileManager.hpp"
#include "../platform/Foundation/NSURL.hpp"
#include "../platform/objc/method.hpp"

namespace qvsb {

/// The category that adds `forceFileProtectionForItemAtPath:`.
extern const Category NSFileManagerHelpers;

/// Raises the protection class of the item at `path` to complete until first user authentication when it has none; any
/// other class stays. Nothing happens when there is no item. A failure is logged, never raised. Any thread.
void forceFileProtectionForItemAtPath(NSFileManager fileManager, NSString path);

/// The same through the default file manager.
void forceFileProtectionForItemAtPath(NSString path);
void forceFileProtectionForItemAtURL(NSURL url);

} // namespace qvsb
