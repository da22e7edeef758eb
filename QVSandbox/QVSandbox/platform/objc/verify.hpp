// Checks of a C++ signature against what the runtime says of a method.
#pragma once

#include "object.hpp"
#include "selector.hpp"

namespace qvsb {

/// Whether two method encodings describe the same call: offsets, qualifiers, protocol names and what a pointer points
/// to do not matter, an object and a block are both objects. (An exchange demands more: see NSObject+QVSBJRSwizzle.)
bool encodingsAgree(const char* left, const char* right);

/// Raises NSInternalInconsistencyException with a sentence that names class, selector and both encodings when the
/// receiver's method has another signature than the one sent. A method that is not there is not judged: it may be
/// forwarded.
void checkSend(Object receiver, SEL selector, const char* expected);

/// The same for a method that a class of ours defines although its superclass already has it with another signature.
void checkOverride(Class superclass, const char* className, SEL selector, const char* declared);

} // namespace qvsb
