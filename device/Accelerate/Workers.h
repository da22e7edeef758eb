// Threads that share the rows of an image.
#pragma once

#include <cstddef>
#include <functional>

namespace qvdevice {

/// How many threads an image is shared among: the processors that this process may use.
std::size_t workerCount();

/// Another number from now on, 1 at least; for measurements.
void setWorkerCount(std::size_t count);

/// Calls `work` with 0, 1... `parts` - 1, each once, on this thread and on others, and returns when all calls have.
/// While the others are busy for another caller, or when there are none, this thread makes all calls. `work` does not
/// throw.
void shareAmongWorkers(std::size_t parts, const std::function<void(std::size_t)>& work);

} // namespace qvdevice
