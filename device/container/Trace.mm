// The trace: what happens on the device, one JSON text sequence (RFC 7464) for whoever runs the app.

#include <fcntl.h>
#include <time.h>
#include <unistd.h>

#import <Foundation/Foundation.h>
#import <QVDevice/QVDevice.h>

#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>

#include "container/Json.h"
#include "container/Refusal.h"
#include "container/Trace.h"

namespace {

using namespace qvdevice;

double milliseconds(clockid_t clock) {
  timespec time{};
  ::clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// When this library was loaded, which is before any code of the app runs.
const double startTime = milliseconds(CLOCK_MONOTONIC);

const int descriptor = descriptorFromEnvironment("QVDEVICE_TRACE_FD");

std::mutex &writing() {
  static std::mutex &lock = *new std::mutex;
  return lock;
}

void writeWhole(const std::string &record) {
  // One write, so that nothing which others put into the same pipe gets between; a rest only where the pipe was full.
  std::string_view rest = record;
  while (!rest.empty()) {
    const ssize_t written = ::write(descriptor, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

} // namespace

namespace qvdevice {

int traceDescriptor() { return descriptor; }

void trace(nlohmann::ordered_json record) {
  if (descriptor < 0) return;
  record["t"] = std::round((milliseconds(CLOCK_MONOTONIC) - startTime) * 1e3) / 1e3;
  const std::string line =
      "\x1e" + record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
  const std::lock_guard locked(writing());
  writeWhole(line);
}

} // namespace qvdevice

BOOL QVDeviceIsTraced(void) { return descriptor >= 0; }

void QVDeviceTrace(NSDictionary *event) {
  if (descriptor >= 0) trace(jsonFrom(event));
}
