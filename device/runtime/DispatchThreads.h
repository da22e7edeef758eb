#pragma once

#include "runtime/DispatchQueue.h"
#include "runtime/DispatchTime.h"

namespace qvdevice {

enum class Priority { High, Default, Low, Background };

/// Gives the work to one of the process's worker threads. More urgent work starts first.
void runOnWorkerThread(Work* work, Priority priority);

/// Puts the work into the queue when the moment has come.
void enqueueAt(Moment moment, dispatch_queue_t queue, Work* work);

} // namespace qvdevice
