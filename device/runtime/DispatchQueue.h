#pragma once

#include <dispatch/dispatch.h>

#include <atomic>
#include <mutex>
#include <thread>

namespace qvdevice {

/// One call that waits in a queue.
struct Work {
  void* context;
  dispatch_function_t function;
  Work* next = nullptr;
};

/// First in, first out. The lock of whoever holds it guards it.
class WorkList {
public:
  constexpr WorkList() = default;
  bool empty() const { return first_ == nullptr; }
  std::size_t count() const { return count_; }
  void push(Work* work);
  Work* pop();

private:
  Work* first_ = nullptr;
  Work* last_ = nullptr;
  std::size_t count_ = 0;
};

/// Runs the work in an autorelease pool of its own and deletes it.
void perform(Work* work);

/// What all objects of dispatch.h have in common.
struct DispatchObject {
  /// For objects that live as long as the process.
  static constexpr long kImmortal = -1;
  explicit constexpr DispatchObject(long initialReferences) : references(initialReferences) {}
  virtual ~DispatchObject() = default;
  std::atomic<long> references;
};

/// Ends the process with a sentence, as the platform does when it is used in a way that can only deadlock.
[[noreturn]] void dispatchClientBug(const char* sentence);

} // namespace qvdevice

struct dispatch_queue_s : qvdevice::DispatchObject {
  using qvdevice::DispatchObject::DispatchObject;
  virtual const char* label() const = 0;
  virtual void enqueue(qvdevice::Work* work) = 0;
  /// Runs the work before returning, in the order of the queue.
  virtual void runAndWait(void* context, dispatch_function_t function) = 0;
};
