// Semaphores and groups.

#include <Block.h>

#include <condition_variable>
#include <vector>

#include "runtime/DispatchThreads.h"
#include "runtime/DispatchTime.h"

using namespace qvdevice;

struct dispatch_semaphore_s final : DispatchObject {
  explicit dispatch_semaphore_s(long initialValue) : DispatchObject(1), value(initialValue) {}
  std::mutex lock;
  std::condition_variable signalled;
  long value;
};

struct dispatch_group_s final : DispatchObject {
  dispatch_group_s() : DispatchObject(1) {}
  struct Notification {
    dispatch_queue_t queue;
    Work *work;
  };
  std::mutex lock;
  std::condition_variable emptied;
  long entered = 0;
  std::vector<Notification> notifications;
};

dispatch_semaphore_t dispatch_semaphore_create(long value) {
  return value < 0 ? nullptr : new dispatch_semaphore_s(value);
}

long dispatch_semaphore_wait(dispatch_semaphore_t semaphore, dispatch_time_t timeout) {
  std::unique_lock locked(semaphore->lock);
  if (!waitUntil(semaphore->signalled, locked, timeout, [semaphore] { return semaphore->value > 0; })) return 1;
  --semaphore->value;
  return 0;
}

long dispatch_semaphore_signal(dispatch_semaphore_t semaphore) {
  const std::lock_guard locked(semaphore->lock);
  ++semaphore->value;
  semaphore->signalled.notify_one();
  return 0;
}

dispatch_group_t dispatch_group_create(void) { return new dispatch_group_s; }

void dispatch_group_enter(dispatch_group_t group) {
  // Whoever is inside keeps the group.
  dispatch_retain(group);
  const std::lock_guard locked(group->lock);
  ++group->entered;
}

void dispatch_group_leave(dispatch_group_t group) {
  std::vector<dispatch_group_s::Notification> due;
  {
    const std::lock_guard locked(group->lock);
    if (group->entered == 0) dispatchClientBug("Unbalanced call to dispatch_group_leave()");
    if (--group->entered == 0) {
      due.swap(group->notifications);
      group->emptied.notify_all();
    }
  }
  for (const auto &notification : due) {
    notification.queue->enqueue(notification.work);
    dispatch_release(notification.queue);
  }
  dispatch_release(group);
}

long dispatch_group_wait(dispatch_group_t group, dispatch_time_t timeout) {
  std::unique_lock locked(group->lock);
  return waitUntil(group->emptied, locked, timeout, [group] { return group->entered == 0; }) ? 0 : 1;
}

void dispatch_group_notify_f(dispatch_group_t group, dispatch_queue_t queue, void *context, dispatch_function_t work) {
  auto *const call = new Work{context, work};
  {
    const std::lock_guard locked(group->lock);
    if (group->entered > 0) {
      dispatch_retain(queue);
      group->notifications.push_back({queue, call});
      return;
    }
  }
  queue->enqueue(call);
}

void dispatch_group_async(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block) {
  dispatch_group_enter(group);
  dispatch_async(queue, ^{
    block();
    dispatch_group_leave(group);
  });
}

void dispatch_group_notify(dispatch_group_t group, dispatch_queue_t queue, dispatch_block_t block) {
  dispatch_group_notify_f(group, queue, Block_copy(block), [](void *copy) {
    reinterpret_cast<dispatch_block_t>(copy)();
    _Block_release(copy);
  });
}
