// Raising the platform's exception for a mistake of ours, with a sentence.
#pragma once

#include <initializer_list>

namespace qvsb {

/// Raises NSInternalInconsistencyException; its reason is the pieces joined. Sends are not type-checked on the way, so
/// the checks themselves can use it.
[[noreturn]] void raiseInconsistency(std::initializer_list<const char*> pieces);

} // namespace qvsb
