#pragma once

#include "../platform/Foundation/NSObject.hpp"

namespace qvsb {

/// Captures what the process writes to standard error. As long as the class does not exist, nothing is captured. Main
/// thread.
class SBLogHelper : public NSObject {
  QVSB_HANDLE(SBLogHelper, NSObject)
  QVSB_CLASS_METHOD(BOOL, isLogInterceptionStarted, "isLogInterceptionStarted")
  QVSB_CLASS_METHOD(void, startInterceptingLogs, "startInterceptingLogs")
  QVSB_CLASS_METHOD(void, stopInterceptingLogsPreservingFile, "stopInterceptingLogsPreservingFile:", BOOL)
};

} // namespace qvsb
