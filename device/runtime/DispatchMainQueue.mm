// The main queue: its work runs on the main thread, in order, when the main run loop turns.

#include <sys/eventfd.h>
#include <unistd.h>

#import <Foundation/Foundation.h>
#include <condition_variable>

#include "runtime/DispatchQueue.h"

using namespace qvdevice;

namespace {

bool onMainThread() { return ::gettid() == ::getpid(); }

class MainQueue final : public dispatch_queue_s {
public:
  constexpr MainQueue() : dispatch_queue_s(DispatchObject::kImmortal) {}

  const char *label() const override { return "com.apple.main-thread"; }

  void enqueue(Work *work) override {
    const std::lock_guard locked(lock_);
    works_.push(work);
    signal();
  }

  void runAndWait(void *context, dispatch_function_t function) override {
    if (onMainThread()) dispatchClientBug("dispatch_sync called on queue already owned by current thread");
    struct Sync {
      void *context;
      dispatch_function_t function;
      std::mutex lock{};
      std::condition_variable changed{};
      bool done = false;
    } sync{context, function};
    enqueue(new Work{&sync, [](void *argument) {
                       auto &waiting = *static_cast<Sync *>(argument);
                       waiting.function(waiting.context);
                       const std::lock_guard finished(waiting.lock);
                       waiting.done = true;
                       waiting.changed.notify_all();
                     }});
    std::unique_lock locked(sync.lock);
    sync.changed.wait(locked, [&sync] { return sync.done; });
  }

  /// Opens the descriptor that the run loop waits for.
  int open() {
    const std::lock_guard locked(lock_);
    descriptor_ = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (!works_.empty()) signal();
    return descriptor_;
  }

  /// Runs what is in the queue now; what that adds waits for the loop's next turn. A run loop that turns inside one of
  /// the works does not run the others: they were promised to come after it.
  void drain() {
    std::uint64_t signals = 0;
    [[maybe_unused]] const ssize_t length = ::read(descriptor_, &signals, sizeof signals);
    if (draining_) return;
    const Draining guard(*this);
    std::size_t count = 0;
    {
      const std::lock_guard locked(lock_);
      count = works_.count();
    }
    for (; count > 0; --count)
      perform(next());
  }

private:
  struct Draining {
    explicit Draining(MainQueue &queue) : queue_(queue) { queue_.draining_ = true; }
    Draining(const Draining &) = delete;
    Draining &operator=(const Draining &) = delete;
    ~Draining() {
      queue_.draining_ = false;
      const std::lock_guard locked(queue_.lock_);
      if (!queue_.works_.empty()) queue_.signal();
    }
    MainQueue &queue_;
  };

  Work *next() {
    const std::lock_guard locked(lock_);
    return works_.pop();
  }

  void signal() {
    const std::uint64_t one = 1;
    if (descriptor_ >= 0) [[maybe_unused]]
      const ssize_t length = ::write(descriptor_, &one, sizeof one);
  }

  std::mutex lock_;
  WorkList works_;
  int descriptor_ = -1;
  bool draining_ = false;
};

// The platform's header names the object itself, by its base.
extern "C" {
[[clang::no_destroy]] constinit MainQueue mainQueue __asm__("_dispatch_main_q");
}

} // namespace

@interface QVDeviceMainQueueWatcher : NSObject <RunLoopEvents>
@end

@implementation QVDeviceMainQueueWatcher

+ (void)load {
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  // Lives as long as the process: the main queue never goes away.
  QVDeviceMainQueueWatcher *const watcher = [[QVDeviceMainQueueWatcher alloc] init];
  void *const descriptor = reinterpret_cast<void *>(static_cast<std::intptr_t>(mainQueue.open()));
  NSRunLoop *const loop = [NSRunLoop currentRunLoop];
  for (NSString *mode in @[ NSDefaultRunLoopMode, @"UITrackingRunLoopMode" ]) {
    [loop addEvent:descriptor type:ET_RDESC watcher:watcher forMode:mode];
  }
  [pool release];
}

- (void)receivedEvent:(void *)data type:(RunLoopEventType)type extra:(void *)extra forMode:(NSString *)mode {
  (void)data, (void)type, (void)extra, (void)mode;
  mainQueue.drain();
}

@end
