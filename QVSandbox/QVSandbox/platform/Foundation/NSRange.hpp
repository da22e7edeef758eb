#pragma once

#include "../objc/encoding.hpp"

namespace qvsb {

struct NSRange {
  NSUInteger location;
  NSUInteger length;
};

/// Where something stands that stands nowhere.
inline constexpr NSUInteger NSNotFound = static_cast<NSUInteger>(-1) >> 1;

template <> struct StructEncoding<NSRange> {
  static constexpr const char* name = "_NSRange";
  using Fields = FieldList<NSUInteger, NSUInteger>;
};

} // namespace qvsb
