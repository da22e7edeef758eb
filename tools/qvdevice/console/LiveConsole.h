#pragma once

#include "Run.h"

namespace qvdevice {

struct ConsoleOptions : RunOptions {
  /// 0 lets the system choose one.
  int port = 0;
};

/// Runs an app and serves a page on which people see it and do things to it, until they end that. The status is that of
/// the app's last run. Without an app it is the notes app of this build, on a device with the administrator's own.
/// Throws Failure when it cannot even be tried.
int console(ConsoleOptions options);

} // namespace qvdevice
