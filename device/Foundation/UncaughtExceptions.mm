// An exception that nobody catches ends an app with a sentence and SIGABRT. Debian's Foundation ends the process with
// an ordinary exit status, which looks like an app that ended by itself.

#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdlib>
#include <dlfcn.h>
#include <string>

#include "container/SystemLog.h"

namespace {

std::atomic<NSUncaughtExceptionHandler *> appHandler;

void endApp(NSException *exception) {
  // Whatever was thrown, it need not be an NSException.
  const bool named = [exception isKindOfClass:[NSException class]];
  NSString *const name = named ? [exception name] : NSStringFromClass([exception class]);
  NSString *const reason = named ? [exception reason] : [exception description];
  qvdevice::systemLog(std::string("*** Terminating app due to uncaught exception '") + [name UTF8String] +
                      "', reason: '" + (reason ? [reason UTF8String] : "(null)") + "'\n");
  if (NSUncaughtExceptionHandler *const handler = appHandler.load()) handler(exception);
  std::abort();
}

} // namespace

// An app's own handler is kept here, so that it cannot take the place of the one that ends the process.
extern "C" void NSSetUncaughtExceptionHandler(NSUncaughtExceptionHandler *handler) { appHandler = handler; }

extern "C" NSUncaughtExceptionHandler *NSGetUncaughtExceptionHandler() { return appHandler; }

__attribute__((constructor)) static void QVDeviceWatchForUncaughtExceptions() {
  using Setter = void (*)(NSUncaughtExceptionHandler *);
  // Safe: this is the function of that name and type in the Foundation that this definition hides.
  const auto set = reinterpret_cast<Setter>(dlsym(RTLD_NEXT, "NSSetUncaughtExceptionHandler"));
  if (set) set(endApp);
}
