#pragma once

#include "../platform/objc/method.hpp"

namespace qvsb {

/// The pasteboard guard, methods of ZorbelUtil. What the pasteboard held when the app became active is put back when
/// the app leaves the foreground without leave to copy; the SDK's own items stay as they are. All goes through the
/// SDK's proxy of the general pasteboard. Main thread.
extern const Category ZorbelUtilPasteboard;

} // namespace qvsb
