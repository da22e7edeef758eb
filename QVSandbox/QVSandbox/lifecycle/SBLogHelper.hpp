// Standard error as one of the SDK's log files.
#pragma once

#include "../platform/Foundation/NSString.hpp"
#include "../platform/System/stdio.hpp"

namespace qvsb {

/// Captures what the process writes to standard error: from load on, until the configuration says otherwise. Once a
/// captured file has been kept, nothing is captured any more. Every failure is a line at level 0, and standard error
/// then stays where it was. Main thread, `load` excepted.
class SBLogHelper : public NSObject {
  QVSB_HANDLE(SBLogHelper, NSObject)

  /// Remembers where standard error leads and starts to capture it. Once: every further call does nothing.
  QVSB_CLASS_METHOD(void, load, "load")

  /// The path of the file behind a stream; nil when the system knows none.
  QVSB_CLASS_METHOD(NSString, filePathFromFile, "filePathFromFile:", CStream*)

  /// Goes on answering YES after a stop that kept the file.
  QVSB_CLASS_METHOD(BOOL, isLogInterceptionStarted, "isLogInterceptionStarted")
  QVSB_CLASS_METHOD(void, startInterceptingLogs, "startInterceptingLogs")
  QVSB_CLASS_METHOD(void, stopInterceptingLogsPreservingFile, "stopInterceptingLogsPreservingFile:", BOOL)

  /// Opens a file for reading and for writing at its end, and makes it when it is missing; -1 on failure. The caller
  /// owns the descriptor.
  QVSB_CLASS_METHOD(int, newFileDescriptorForPath, "newFileDescriptorForPath:", const char*)
  /// Puts the file in the place of standard error. The descriptor that was opened for it, which stays open; -1 when
  /// there is none.
  QVSB_CLASS_METHOD(int, replaceStdErrDescriptorWithNewPath, "replaceStdErrDescriptorWithNewPath:", const char*)
};

Class registerSBLogHelper();

} // namespace qvsb
