// The integer types as the target has them. musl's <stdint.h> would compile too, but its int64_t is `long` where arm64
// iOS has `long long`, which changes mangled names and overloads. The compiler's own header knows the target, and says
// so itself, without a C library's help, in a freestanding program: for the length of this header ours is one.
#pragma once
#pragma push_macro("__STDC_HOSTED__")
#undef __STDC_HOSTED__
#define __STDC_HOSTED__ 0
#include_next <stdint.h>
#pragma pop_macro("__STDC_HOSTED__")
