// Queues: work for later, or for another thread.
#pragma once

#include "../objc/block.hpp"

namespace qvsb {

/// A queue; none is ever made or kept here, so that nobody counts references.
using dispatch_queue_t = struct dispatch_queue_s*;

/// Of the priorities that the system's own queues have.
inline constexpr long DISPATCH_QUEUE_PRIORITY_HIGH = 2;

} // namespace qvsb

extern "C" {
// The main queue is an object, not a pointer to one.
extern qvsb::dispatch_queue_s qvsbDispatchMainQueue QVSB_SYMBOL(_dispatch_main_q);
qvsb::dispatch_queue_t qvsbDispatchGetGlobalQueue(long priority, unsigned long flags)
    QVSB_SYMBOL(dispatch_get_global_queue);
void qvsbDispatchAsync(qvsb::dispatch_queue_t queue, qvsb::Block<void()> work) QVSB_SYMBOL(dispatch_async);
}

namespace qvsb {

/// Runs on the main thread, a piece of work on each later turn of its run loop.
inline dispatch_queue_t dispatch_get_main_queue() { return &qvsbDispatchMainQueue; }

/// One of the system's queues, which run on threads of their own. The flags are 0.
inline dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags) {
  return qvsbDispatchGetGlobalQueue(priority, flags);
}

/// Has a copy of the block run by the queue, and returns at once.
inline void dispatch_async(dispatch_queue_t queue, Block<void()> work) { qvsbDispatchAsync(queue, work); }

} // namespace qvsb
