#pragma once

#include <objc/objc.h>

namespace qvdevice {

/// A method's implementation by its real type, which is the one that the method's encoding tells.
template <class Function> Function implementationAs(IMP implementation) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(implementation));
}

/// A function whose type is the one that the method's encoding tells, as an implementation.
template <class Function> IMP asImplementation(Function* function) {
  return reinterpret_cast<IMP>(reinterpret_cast<void*>(function));
}

} // namespace qvdevice
