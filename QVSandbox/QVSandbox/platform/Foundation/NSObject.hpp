#pragma once

#include "../objc/declare.hpp"
#include "../objc/ownership.hpp"

namespace qvsb {

class NSString;

class NSObject : public Object {
  QVSB_HANDLE(NSObject, Object)
  QVSB_METHOD(BOOL, isKindOfClass, "isKindOfClass:", Class)
  QVSB_METHOD(BOOL, isEqual, "isEqual:", Object)
  /// The same for equal objects.
  QVSB_METHOD(NSUInteger, hash, "hash")
  QVSB_METHOD(BOOL, respondsToSelector, "respondsToSelector:", SEL)
  QVSB_METHOD(NSString, description, "description")
};

static_assert(sizeof(NSObject) == sizeof(void*) && std::is_trivially_copyable_v<NSObject>,
              "a handle is passed and returned in a register");

} // namespace qvsb
