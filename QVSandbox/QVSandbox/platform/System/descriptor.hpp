// File descriptors. No C header tells these values: each target has its own, and they stand here.
#pragma once

#include <span>

#include "../objc/target.hpp"

// As in C, the tail really is variable: on Apple's arm64 it travels on the stack.
extern "C" int qvsbOpen(const char* path, int flags, ...) QVSB_SYMBOL(open);
extern "C" int qvsbDup2(int descriptor, int asDescriptor) QVSB_SYMBOL(dup2);
#if QVSB_APPLE_RUNTIME
extern "C" int* qvsbErrorNumber() QVSB_SYMBOL(__error);
#else
extern "C" int* qvsbErrorNumber() QVSB_SYMBOL(__errno_location);
#endif

namespace qvsb {

// Not by their C names, which are macros in files that include C headers as well.
inline constexpr int kStandardErrorDescriptor = 2;
inline constexpr int kOpenReadWrite = 2;
#if QVSB_APPLE_RUNTIME
inline constexpr int kOpenAppend = 0x8;
inline constexpr int kOpenCreate = 0x200;
#else
inline constexpr int kOpenAppend = 02000;
inline constexpr int kOpenCreate = 0100;
#endif

/// The room that a path takes, its end included; a longer one has no name for pathOfDescriptor.
inline constexpr unsigned long kPathSize = 1024;

/// A descriptor, or -1 and the reason in errorNumber(). `mode` is for a file that is made.
inline int open(const char* path, int flags, int mode) { return qvsbOpen(path, flags, mode); }
/// Makes `asDescriptor` lead where `descriptor` does. -1 on failure, with the reason in errorNumber().
inline int duplicate(int descriptor, int asDescriptor) { return qvsbDup2(descriptor, asDescriptor); }
/// Why the last call of this thread failed that did: C's `errno`.
inline int errorNumber() { return *qvsbErrorNumber(); }

/// Asks the system for the path that a descriptor leads to and writes it, ended by a zero. False for what has none: a
/// closed descriptor, a pipe without a name, a socket, a file that has been removed.
bool pathOfDescriptor(int descriptor, std::span<char, kPathSize> path);

} // namespace qvsb
