// The queues whose work runs on worker threads: the global ones, and those that apps make.

#include <array>
#include <condition_variable>
#include <string>

#include "runtime/DispatchThreads.h"

using namespace qvdevice;

struct dispatch_queue_attr_s {};
dispatch_queue_attr_s _dispatch_queue_attr_concurrent;

namespace {

/// Any number of its works run at once.
struct ConcurrentQueue final : dispatch_queue_s {
  ConcurrentQueue(const char *name, Priority urgency, long initialReferences)
      : dispatch_queue_s(initialReferences), name_(name), priority_(urgency) {}

  const char *label() const override { return name_.c_str(); }
  void enqueue(Work *work) override { runOnWorkerThread(work, priority_); }
  void runAndWait(void *context, dispatch_function_t function) override { function(context); }

private:
  std::string name_;
  Priority priority_;
};

/// One of its works at a time, in order; each on whichever worker thread is free.
class SerialQueue final : public dispatch_queue_s {
public:
  explicit SerialQueue(const char *name) : dispatch_queue_s(1), name_(name) {}

  const char *label() const override { return name_.c_str(); }

  void enqueue(Work *work) override {
    const std::lock_guard locked(lock_);
    works_.push(work);
    if (!busy_) {
      busy_ = true;
      scheduleDrain();
    }
  }

  void runAndWait(void *context, dispatch_function_t function) override {
    {
      std::unique_lock locked(lock_);
      if (busy_ && owner_ == std::this_thread::get_id()) {
        dispatchClientBug("dispatch_sync called on queue already owned by current thread");
      }
      if (busy_) {
        waitBehindTheOthers(locked, context, function);
        return;
      }
      busy_ = true;
      owner_ = std::this_thread::get_id();
    }
    const Turn turn(*this);
    function(context);
  }

private:
  /// Ends the current thread's turn, also when its work raised.
  struct Turn {
    explicit Turn(SerialQueue &queue) : queue_(queue) {}
    Turn(const Turn &) = delete;
    Turn &operator=(const Turn &) = delete;
    ~Turn() { queue_.endTurn(); }
    SerialQueue &queue_;
  };

  void waitBehindTheOthers(std::unique_lock<std::mutex> &locked, void *context, dispatch_function_t function) {
    struct Sync {
      SerialQueue &queue;
      void *context;
      dispatch_function_t function;
      bool done = false;
    } sync{*this, context, function};
    works_.push(new Work{&sync, [](void *argument) {
                           auto &waiting = *static_cast<Sync *>(argument);
                           waiting.function(waiting.context);
                           const std::lock_guard finished(waiting.queue.lock_);
                           waiting.done = true;
                           waiting.queue.synced_.notify_all();
                         }});
    synced_.wait(locked, [&sync] { return sync.done; });
  }

  /// With the lock held. The queue stays as long as it has work.
  void scheduleDrain() {
    dispatch_retain(this);
    runOnWorkerThread(new Work{this, [](void *queue) { static_cast<SerialQueue *>(queue)->drainOne(); }},
                      Priority::Default);
  }

  /// One work for each turn on a worker thread: a long queue does not keep others waiting.
  void drainOne() {
    Work *work = nullptr;
    {
      const std::lock_guard locked(lock_);
      owner_ = std::this_thread::get_id();
      work = works_.pop();
    }
    {
      const Turn turn(*this);
      if (work != nullptr) perform(work);
    }
    dispatch_release(this);
  }

  void endTurn() {
    const std::lock_guard locked(lock_);
    owner_ = {};
    busy_ = !works_.empty();
    if (busy_) scheduleDrain();
  }

  std::string name_;
  std::mutex lock_;
  std::condition_variable synced_;
  WorkList works_;
  /// A thread has a turn, or one has been asked for.
  bool busy_ = false;
  std::thread::id owner_;
};

} // namespace

dispatch_queue_t dispatch_get_global_queue(long priority, unsigned long flags) {
  static const std::array<ConcurrentQueue *, 4> &queues = *new std::array<ConcurrentQueue *, 4>{
      new ConcurrentQueue("com.apple.root.high-priority", Priority::High, DispatchObject::kImmortal),
      new ConcurrentQueue("com.apple.root.default-priority", Priority::Default, DispatchObject::kImmortal),
      new ConcurrentQueue("com.apple.root.low-priority", Priority::Low, DispatchObject::kImmortal),
      new ConcurrentQueue("com.apple.root.background-priority", Priority::Background, DispatchObject::kImmortal)};
  if (flags != 0) return nullptr;
  switch (priority) {
  case DISPATCH_QUEUE_PRIORITY_HIGH:
    return queues[0];
  case DISPATCH_QUEUE_PRIORITY_DEFAULT:
    return queues[1];
  case DISPATCH_QUEUE_PRIORITY_LOW:
    return queues[2];
  case DISPATCH_QUEUE_PRIORITY_BACKGROUND:
    return queues[3];
  default:
    return nullptr;
  }
}

dispatch_queue_t dispatch_queue_create(const char *label, dispatch_queue_attr_t attributes) {
  if (label == nullptr) label = "";
  if (attributes == DISPATCH_QUEUE_CONCURRENT) return new ConcurrentQueue(label, Priority::Default, 1);
  return new SerialQueue(label);
}
