// What differs between the two targets and is needed everywhere: which Objective-C runtime is underneath, and the
// platform's basic types. Nothing else in the library asks which target it is built for, except where a platform
// declaration really differs (and says so there).
#pragma once

#if defined(__APPLE__)
#define QVSB_APPLE_RUNTIME 1
#else
#define QVSB_APPLE_RUNTIME 0
#endif

// Kept in the binary's export list (exports.txt); everything else is hidden.
#define QVSB_EXPORT extern "C" __attribute__((visibility("default")))

namespace qvsb {

/// The platform's truth value. Its encoding is part of a method's identity: `B` on 64-bit iOS, `C` with GCC's runtime.
#if QVSB_APPLE_RUNTIME
using BOOL = bool;
#else
using BOOL = unsigned char;
#endif
inline constexpr BOOL YES = 1;
inline constexpr BOOL NO = 0;

using NSInteger = long;
using NSUInteger = unsigned long;
using CGFloat = double;

} // namespace qvsb

// The assembler name of a platform C symbol, for a declaration whose C++ types or name differ from the platform's.
#if QVSB_APPLE_RUNTIME
#define QVSB_SYMBOL(NAME) __asm__("_" #NAME)
#else
#define QVSB_SYMBOL(NAME) __asm__(#NAME)
#endif
