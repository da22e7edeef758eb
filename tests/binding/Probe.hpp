// The C++ view of the Objective-C classes in Probe.mm.
#pragma once

#include "platform/CoreGraphics/CGGeometry.hpp"
#include "platform/Foundation/NSError.hpp"
#include "platform/Foundation/NSException.hpp"
#include "platform/Foundation/NSString.hpp"
#include "platform/objc/block.hpp"
#include "platform/objc/declare.hpp"
#include "platform/objc/ownership.hpp"

struct Five {
  double a, b, c, d, e;
};
struct Small {
  int left;
  float right;
};

namespace qvsb {

template <> struct StructEncoding<Five> {
  static constexpr const char* name = "QVFive";
  using Fields = FieldList<double, double, double, double, double>;
};
template <> struct StructEncoding<Small> {
  static constexpr const char* name = "QVSmall";
  using Fields = FieldList<int, float>;
};

class QVProbe : public NSObject {
  QVSB_HANDLE(QVProbe, NSObject)
  QVSB_CLASS_METHOD(int, live, "live")
  QVSB_METHOD(NSInteger, number, "number")
  QVSB_METHOD(void, setNumber, "setNumber:", NSInteger)
  QVSB_METHOD(void, keep, "keep:", Block<void(NSInteger)>)
  QVSB_METHOD(void, callKept, "callKept:", NSInteger)
  QVSB_METHOD(void, forget, "forget")
  QVSB_METHOD(NSString, greeting, "greeting")
  QVSB_METHOD(void, raise, "raise")

  static Strong<QVProbe> make() {
    return Strong<QVProbe>::adopt(send<QVProbe>(send<Object>(classObject(), "alloc"_sel), "init"_sel));
  }
};

} // namespace qvsb
