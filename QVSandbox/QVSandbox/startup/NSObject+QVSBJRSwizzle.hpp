// The exchange of two methods' implementations, as class methods of every class:
// `qvsbjr_swizzleMethod:withMethod:error:` and `qvsbjr_swizzleClassMethod:withClassMethod:error:`.
#pragma once

#include "../platform/Foundation/NSError.hpp"
#include "../platform/objc/method.hpp"

namespace qvsb {

/// The category that gives every class the two methods.
extern const Category NSObjectQVSBJRSwizzle;

/// Exchanges the instance methods `original` and `alternative` of `cls` in `cls` alone: an inherited one is first given
/// to the class itself. Refused (NO, and an error if `error` is not null), with the class unchanged, when either is
/// missing or their encodings differ in any byte. Neither raises nor logs.
BOOL qvsbjr_swizzleMethod(Class cls, SEL original, SEL alternative, NSError* error);

/// The same for class methods.
BOOL qvsbjr_swizzleClassMethod(Class cls, SEL original, SEL alternative, NSError* error);

} // namespace qvsb
