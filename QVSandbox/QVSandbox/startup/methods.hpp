#pragma once

namespace qvsb {

/// Gives the exported constants their values and makes all of the library's classes and methods known to the runtime.
/// First of all at load, and once.
void addMethodsAndClasses();

} // namespace qvsb
