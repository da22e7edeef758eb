// Points, sizes, rectangles.
#pragma once

#include "../objc/encoding.hpp"

namespace qvsb {

struct CGPoint {
  CGFloat x;
  CGFloat y;
};

struct CGSize {
  CGFloat width;
  CGFloat height;
};

struct CGRect {
  CGPoint origin;
  CGSize size;
};

template <> struct StructEncoding<CGPoint> {
  static constexpr const char* name = "CGPoint";
  using Fields = FieldList<CGFloat, CGFloat>;
};
template <> struct StructEncoding<CGSize> {
  static constexpr const char* name = "CGSize";
  using Fields = FieldList<CGFloat, CGFloat>;
};
template <> struct StructEncoding<CGRect> {
  static constexpr const char* name = "CGRect";
  using Fields = FieldList<CGPoint, CGSize>;
};

} // namespace qvsb
