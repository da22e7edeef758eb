// Times of dispatch.h. Moments of the wall clock have the highest bit set: they are nanoseconds since 1970, negated.

#include "runtime/DispatchTime.h"

#include <ctime>

namespace {

using namespace std::chrono;

constexpr dispatch_time_t kWallClock = 1ULL << 63;

bool isWallClock(dispatch_time_t time) { return (time & kWallClock) != 0; }

dispatch_time_t negated(dispatch_time_t time) { return ~time + 1; }

/// Never 0, which would mean now, and never the highest bit, which would mean the other clock.
dispatch_time_t shifted(dispatch_time_t start, std::int64_t delta) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(static_cast<std::int64_t>(start), delta, &sum)) return DISPATCH_TIME_FOREVER;
  return sum < 1 ? 1 : static_cast<dispatch_time_t>(sum);
}

dispatch_time_t shiftedWall(dispatch_time_t start, std::int64_t delta) {
  const dispatch_time_t wall = shifted(start, delta);
  return wall == DISPATCH_TIME_FOREVER ? wall : negated(wall);
}

template <class Clock> dispatch_time_t now() {
  return static_cast<dispatch_time_t>(nanoseconds(Clock::now().time_since_epoch()).count());
}

} // namespace

dispatch_time_t dispatch_time(dispatch_time_t when, std::int64_t delta) {
  if (when == DISPATCH_TIME_FOREVER) return when;
  if (isWallClock(when)) return shiftedWall(negated(when), delta);
  return shifted(when == DISPATCH_TIME_NOW ? now<steady_clock>() : when, delta);
}

dispatch_time_t dispatch_walltime(const timespec* when, std::int64_t delta) {
  if (when == nullptr) return shiftedWall(now<system_clock>(), delta);
  const nanoseconds start = seconds(when->tv_sec) + nanoseconds(when->tv_nsec);
  return shiftedWall(static_cast<dispatch_time_t>(start.count()), delta);
}

namespace qvdevice {

Moment momentOf(dispatch_time_t time) {
  if (time == DISPATCH_TIME_NOW) return steady_clock::now();
  if (!isWallClock(time)) return Moment(nanoseconds(time));
  const auto wall = static_cast<std::int64_t>(negated(time));
  return steady_clock::now() + nanoseconds(wall - static_cast<std::int64_t>(now<system_clock>()));
}

} // namespace qvdevice
