#pragma once

#include "../objc/encoding.hpp"

namespace qvsb {

struct NSRange {
  NSUInteger location;
  NSUInteger length;
};

template <> struct StructEncoding<NSRange> {
  static constexpr const char* name = "_NSRange";
  using Fields = FieldList<NSUInteger, NSUInteger>;
};

} // namespace qvsb
