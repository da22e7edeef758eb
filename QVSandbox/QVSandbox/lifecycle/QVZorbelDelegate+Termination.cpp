#include "../platform/Dispatch/dispatch.hpp"
#include "../platform/System/stdlib.hpp"
#include "../platform/UIKit/UIDevice.hpp"
#include "QVZorbelDelegateState.hpp"

namespace qvsb {

namespace {

dispatch_queue_t queueForTheEnd() {
  const NSString version = UIDevice::currentDevice().systemVersion();
  if (version.compare_options("6.0"_ns, NSNumericSearch) == NSComparisonResult::orderedAscending) {
    return dispatch_get_global_queue(DISPATCH_QUEUE_PRIORITY_HIGH, 0);
  }
  return dispatch_get_main_queue();
}

} // namespace

void QVZorbelDelegateState::checkIfReadyAndTerminate() {
  const Strong<Zorbel> zorbel = sdkInUse();
  if (zorbel->isReady() && zorbel->isReadyToTerminate() && zorbel->authState() != AuthState::authorized) {
    self<QVZorbelDelegate>()._applicationTerminate();
  }
}

void QVZorbelDelegateState::applicationTerminate() {
  const Strong<QVZorbelDelegate> delegate = self<QVZorbelDelegate>();
  dispatch_async(queueForTheEnd(), makeBlock<void()>([delegate] { of(delegate.get()).endProcess(); }));
}

void QVZorbelDelegateState::endProcess() {
  Zorbel::wrapperLogAtLevel_format(2, "exiting application"_ns);
  const UIApplication application = UIApplication::sharedApplication();
  if (application.respondsToSelector("terminateWithSuccess"_sel)) {
    application.terminateWithSuccess();
    return;
  }
  self<QVZorbelDelegate>().applicationWillTerminate();
  sdkInUse()->willExit();
  exit(0);
}

} // namespace qvsb
