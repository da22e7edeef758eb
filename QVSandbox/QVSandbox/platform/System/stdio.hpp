// The C library's streams.
#pragma once

#include "../objc/encoding.hpp"
#include "../objc/target.hpp"

// C's FILE, by its name on each target. Never looked into.
#if QVSB_APPLE_RUNTIME
struct __sFILE; // NOLINT(bugprone-reserved-identifier): the platform's name
#else
struct _IO_FILE; // NOLINT(bugprone-reserved-identifier): the platform's name
#endif

namespace qvsb {

#if QVSB_APPLE_RUNTIME
using CStream = __sFILE;
template <> struct Encoding<CStream*> {
  static constexpr const char* text = "^{__sFILE}";
};
#else
using CStream = _IO_FILE;
template <> struct Encoding<CStream*> {
  static constexpr const char* text = "^{_IO_FILE}";
};
#endif

} // namespace qvsb

extern "C" {
#if QVSB_APPLE_RUNTIME
extern qvsb::CStream* qvsbStandardError QVSB_SYMBOL(__stderrp);
#else
extern qvsb::CStream* qvsbStandardError QVSB_SYMBOL(stderr);
#endif
int qvsbFileno(qvsb::CStream* stream) QVSB_SYMBOL(fileno);
}

namespace qvsb {

inline CStream* standardError() { return qvsbStandardError; }
/// -1 for a stream that has no descriptor.
inline int descriptorOf(CStream* stream) { return qvsbFileno(stream); }

} // namespace qvsb
