#pragma once

namespace qvsb {

/// Makes all of the library's classes and methods known to the runtime. First of all at load, and once.
void addMethodsAndClasses();

} // namespace qvsb
