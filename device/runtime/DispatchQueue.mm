#include "runtime/DispatchQueue.h"

#import <Foundation/Foundation.h>

#include <cstdlib>
#include <string>

#include "container/SystemLog.h"

namespace qvdevice {

void WorkList::push(Work *work) {
  work->next = nullptr;
  (last_ == nullptr ? first_ : last_->next) = work;
  last_ = work;
  ++count_;
}

Work *WorkList::pop() {
  Work *const work = first_;
  if (work == nullptr) return nullptr;
  first_ = work->next;
  if (first_ == nullptr) last_ = nullptr;
  --count_;
  return work;
}

void perform(Work *work) {
  const Work copy = *work;
  delete work;
  NSAutoreleasePool *const pool = [[NSAutoreleasePool alloc] init];
  copy.function(copy.context);
  [pool release];
}

void dispatchClientBug(const char *sentence) {
  systemLog(std::string("BUG IN CLIENT OF LIBDISPATCH: ") + sentence + "\n");
  std::abort();
}

} // namespace qvdevice
