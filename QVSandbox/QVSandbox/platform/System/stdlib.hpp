// Of the C library.
#pragma once

#include <cstddef>

#include "../objc/target.hpp"

extern "C" void* qvsbMalloc(std::size_t size) QVSB_SYMBOL(malloc);
extern "C" void qvsbFree(void* memory) QVSB_SYMBOL(free);
extern "C" [[noreturn]] void qvsbExit(int status) QVSB_SYMBOL(exit);

namespace qvsb {

/// Memory for a platform function to work in; null when there is none.
inline void* malloc(std::size_t size) { return qvsbMalloc(size); }

/// Gives back what a platform function allocated for its caller.
inline void free(void* memory) { qvsbFree(memory); }

/// Ends the process in good order, what was registered to run at its end included.
[[noreturn]] inline void exit(int status) { qvsbExit(status); }

} // namespace qvsb
