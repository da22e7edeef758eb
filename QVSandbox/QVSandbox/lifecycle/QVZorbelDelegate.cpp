#include "QVZorbelDelegate.hpp"

#include "../policy/SBZorbelConfigHelper.hpp"
#include "QVZorbelDelegateState.hpp"
#include "SBLogHelper.hpp"

namespace qvsb {

namespace {

/// No state that the host can be told: it has not been told any.
constexpr std::int64_t kNeverTold = -1;

} // namespace

Object QVZorbelDelegateState::init() {
  const auto made = super<QVZorbelDelegate>("init"_sel);
  if (made) {
    wrappedZorbelState_ = kNeverTold;
    made._clearInternalState();
    made.addObservers();
  }
  return made;
}

void QVZorbelDelegateState::triggerLogsInterception() {
  // Capture has been on since the library was loaded. The first time that the configuration turns it off, the file
  // holds only what came before anybody had a say, and goes; later ones were wanted.
  if (SBZorbelConfigHelper::isLogCapturingEnabled()) {
    if (!SBLogHelper::isLogInterceptionStarted()) {
      SBLogHelper::startInterceptingLogs();
    }
  } else if (SBLogHelper::isLogInterceptionStarted()) {
    SBLogHelper::stopInterceptingLogsPreservingFile(triggeredLog_);
  }
  triggeredLog_ = YES;
}

Class registerQVZorbelDelegate() { return registerClass<QVZorbelDelegateState>(); }

} // namespace qvsb
