// Memory that runs out when a test wants it to. Only this thread's larger requests count: what is asked for pixels.
#pragma once

#include <cstddef>

namespace shortage {

/// The smallest request that counts.
inline constexpr std::size_t kLarge = 4000;

/// From now on the request of this number fails, counted from 0; with `andAllAfter` also all that follow.
void begin(int number, bool andAllAfter);
/// Requests are granted again. How many have been counted since begin().
int end();

/// Large pieces of memory that have been granted since the process began and have not been given back.
int outstanding();

} // namespace shortage
