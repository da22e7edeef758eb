#include "../platform/Foundation/NSInvocation.hpp"
#include "HostDelegate.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

void QVZorbelDelegateState::updateWrappedZorbelState() {
  const Strong<Zorbel> zorbel = sdkInUse();
  const bool managed = zorbel->isReady() && zorbel->authState() == AuthState::authorized &&
                       zorbel->managedPolicy() == ManagedPolicy::managed;
  const std::int64_t state = managed ? 1 : 0;
  if (state != wrappedZorbelState_) {
    // Kept before the host is told, so that one that raises, or asks for another update, is not told twice.
    wrappedZorbelState_ = state;
    self<QVZorbelDelegate>().notifyAppDelegateWithZorbelState(state);
  }
}

void QVZorbelDelegateState::notifyAppDelegateWithZorbelState(std::int64_t state) {
  const SEL selector = "zorbelStateChangedTo:"_sel;
  const Strong<NSObject> host = hostDelegate();
  if (!hostTakesInteger(host, selector)) {
    return;
  }
  constexpr NSInteger kFirstArgument = 2; // after the receiver and the selector
  const NSInvocation invocation =
      NSInvocation::invocationWithMethodSignature(NSMethodSignature::signatureWithObjCTypes("v@:q"));
  invocation.setSelector(selector);
  invocation.setArgument_atIndex(&state, kFirstArgument);
  invocation.invokeWithTarget(host.get());
}

} // namespace qvsb
