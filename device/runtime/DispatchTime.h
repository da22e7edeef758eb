#pragma once

#include <dispatch/dispatch.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace qvdevice {

/// A moment by the clock that nobody sets.
using Moment = std::chrono::steady_clock::time_point;

/// The moment that a time of dispatch.h means, which is not DISPATCH_TIME_FOREVER.
Moment momentOf(dispatch_time_t time);

/// False when the time came before the condition.
template <class Condition>
bool waitUntil(std::condition_variable& changed, std::unique_lock<std::mutex>& locked, dispatch_time_t time,
               Condition condition) {
  if (time != DISPATCH_TIME_FOREVER) return changed.wait_until(locked, momentOf(time), condition);
  changed.wait(locked, condition);
  return true;
}

} // namespace qvdevice
