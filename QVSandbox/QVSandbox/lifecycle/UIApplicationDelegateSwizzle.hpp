// Grafting the library's methods onto the class of the host app's delegate.
#pragma once

#include "../platform/objc/object.hpp"

/// Grafts the class of `delegate`, unless that is a proxy's. Main thread.
QVSB_EXPORT void UIApplicationDelegateSwizzle(qvsb::Object delegate);

/// Grafts ZBWrappedApplicationDelegate's methods onto `cls`, once: a class that has been grafted, or inherits from one
/// that was, is left as it is. Main thread.
QVSB_EXPORT void UIApplicationDelegateSwizzleMandatoryMethods(qvsb::Class cls);
