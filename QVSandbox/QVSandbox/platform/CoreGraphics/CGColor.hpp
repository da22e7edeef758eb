#pragma once

#include <cstddef>

#include "../objc/encoding.hpp"

namespace qvsb {

using CGColorRef = struct CGColor*;
template <> struct Encoding<CGColorRef> {
  static constexpr const char* text = "^{CGColor=}";
};

} // namespace qvsb

extern "C" std::size_t qvsbColorGetNumberOfComponents(qvsb::CGColorRef color) QVSB_SYMBOL(CGColorGetNumberOfComponents);

namespace qvsb {

/// Alpha counts. 0 for null.
inline std::size_t CGColorGetNumberOfComponents(CGColorRef color) { return qvsbColorGetNumberOfComponents(color); }

} // namespace qvsb
