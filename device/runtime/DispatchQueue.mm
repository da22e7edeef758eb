#include "runtime/DispatchQueue.h"

#import <Foundation/Foundation.h>

#include <cstdio>
#include <cstdlib>

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
  std::fprintf(stderr, "BUG IN CLIENT OF LIBDISPATCH: %s\n", sentence);
  std::abort();
}

} // namespace qvdevice
