// Grafting: putting a method of ZBWrappedApplicationDelegate onto the host app's delegate class.
#pragma once

#include "../platform/objc/object.hpp"
#include "../platform/objc/selector.hpp"

/// Grafts ZBWrappedApplicationDelegate's `replacement` onto `cls` in front of its `original`. A class that has no
/// `original` gets the replacement under that name only, so that instances answer NO to `respondsToSelector:` of the
/// replacement: that is how a replacement knows that the host has no implementation of its own. Reports to the log
/// only.
QVSB_EXPORT void swizzleMethod(qvsb::Class cls, qvsb::SEL original, qvsb::SEL replacement);
