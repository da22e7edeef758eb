// Telling proxies from delegates. A proxy forwards most messages, also those that ask what it is, and so passes for the
// delegate behind it: these look at the object's class with the runtime alone.
#pragma once

#include "../platform/objc/object.hpp"

namespace qvsb {

/// Whether `cls` is `ancestor` or one of its subclasses. NO if either is nil.
bool descends(Class cls, Class ancestor);

/// Whether `object` is one of the SDK's proxies. Their class is looked up at each call: the SDK need not have it, or
/// not yet.
bool isAppDelegateProxy(Object object);

/// Whether instances of `cls` are proxies, the SDK's or anybody's.
bool isClassOfProxies(Class cls);

} // namespace qvsb
