// Of the C library.
#pragma once

#include "../objc/target.hpp"

extern "C" void qvsbFree(void* memory) QVSB_SYMBOL(free);

namespace qvsb {

/// Gives back what a platform function allocated for its caller.
inline void free(void* memory) { qvsbFree(memory); }

} // namespace qvsb
