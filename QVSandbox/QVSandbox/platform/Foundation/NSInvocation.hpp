#pragma once

#include "NSMethodSignature.hpp"

namespace qvsb {

/// A message as an object.
class NSInvocation : public NSObject {
  QVSB_HANDLE(NSInvocation, NSObject)
  QVSB_CLASS_METHOD(NSInvocation, invocationWithMethodSignature, "invocationWithMethodSignature:", NSMethodSignature)
  QVSB_METHOD(void, setSelector, "setSelector:", SEL)
  /// Copies as many bytes as the signature says. The receiver and the selector have the first two indexes.
  QVSB_METHOD(void, setArgument_atIndex, "setArgument:atIndex:", void*, NSInteger)
  QVSB_METHOD(void, invokeWithTarget, "invokeWithTarget:", Object)
};

} // namespace qvsb
