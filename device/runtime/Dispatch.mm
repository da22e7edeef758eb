// The calls of dispatch.h that work on any queue, and the blocks' forms of them.

#include <Block.h>

#include <condition_variable>

#include "runtime/DispatchThreads.h"
#include "runtime/DispatchTime.h"

using namespace qvdevice;

namespace {

void callBlock(void *block) { reinterpret_cast<dispatch_block_t>(block)(); }

void callAndReleaseBlock(void *block) {
  // Released also when the block raises.
  struct Release {
    explicit Release(void *held) : block_(held) {}
    Release(const Release &) = delete;
    Release &operator=(const Release &) = delete;
    ~Release() { _Block_release(block_); }
    void *block_;
  } const release(block);
  callBlock(block);
}

struct OnceGuards {
  std::mutex lock;
  std::condition_variable finished;
};

OnceGuards &onceGuards() {
  static OnceGuards &guards = *new OnceGuards;
  return guards;
}

constexpr dispatch_once_t kOnceRunning = 1;
constexpr dispatch_once_t kOnceDone = ~0L;

} // namespace

void dispatch_retain(void *object) {
  auto &references = static_cast<DispatchObject *>(object)->references;
  if (references.load(std::memory_order_relaxed) != DispatchObject::kImmortal)
    references.fetch_add(1, std::memory_order_relaxed);
}

void dispatch_release(void *object) {
  auto *const counted = static_cast<DispatchObject *>(object);
  if (counted->references.load(std::memory_order_relaxed) == DispatchObject::kImmortal) return;
  if (counted->references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete counted;
}

const char *dispatch_queue_get_label(dispatch_queue_t queue) { return queue->label(); }

void dispatch_async_f(dispatch_queue_t queue, void *context, dispatch_function_t work) {
  queue->enqueue(new Work{context, work});
}

void dispatch_sync_f(dispatch_queue_t queue, void *context, dispatch_function_t work) {
  queue->runAndWait(context, work);
}

void dispatch_after_f(dispatch_time_t when, dispatch_queue_t queue, void *context, dispatch_function_t work) {
  if (when == DISPATCH_TIME_FOREVER) return;
  enqueueAt(momentOf(when), queue, new Work{context, work});
}

void dispatch_once_f(dispatch_once_t *predicate, void *context, dispatch_function_t work) {
  if (__atomic_load_n(predicate, __ATOMIC_ACQUIRE) == kOnceDone) return;
  OnceGuards &guards = onceGuards();
  {
    std::unique_lock locked(guards.lock);
    guards.finished.wait(locked, [predicate] { return *predicate != kOnceRunning; });
    if (*predicate == kOnceDone) return;
    __atomic_store_n(predicate, kOnceRunning, __ATOMIC_RELAXED);
  }
  // Work that raised has not run: the next caller tries again.
  struct Finish {
    Finish(dispatch_once_t *guarded, OnceGuards &waiting) : predicate_(guarded), guards_(waiting) {}
    Finish(const Finish &) = delete;
    Finish &operator=(const Finish &) = delete;
    ~Finish() {
      const std::lock_guard locked(guards_.lock);
      __atomic_store_n(predicate_, outcome, __ATOMIC_RELEASE);
      guards_.finished.notify_all();
    }
    dispatch_once_t outcome = 0;
    dispatch_once_t *predicate_;
    OnceGuards &guards_;
  } finish(predicate, guards);
  work(context);
  finish.outcome = kOnceDone;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
  dispatch_async_f(queue, Block_copy(block), callAndReleaseBlock);
}

void dispatch_sync(dispatch_queue_t queue, dispatch_block_t block) { dispatch_sync_f(queue, block, callBlock); }

void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block) {
  if (when == DISPATCH_TIME_FOREVER) return;
  dispatch_after_f(when, queue, Block_copy(block), callAndReleaseBlock);
}

void dispatch_once(dispatch_once_t *predicate, dispatch_block_t block) { dispatch_once_f(predicate, block, callBlock); }
