#pragma once

struct objc_method;

namespace qvdevice {

/// The method has another implementation than before. Not while the runtime's lock is held.
void noteImplementation(const objc_method* method);

} // namespace qvdevice
