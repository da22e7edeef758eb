// Letting go of an object's last reference, in a way that a weak reference can be read meanwhile on another thread.
//
// Foundation keeps an object's count, less one, in the word before the object, and changes it atomically. Its own
// -release sets a count that fell to -1 back to 0 before it sends -dealloc; a thread that reads a weak reference in
// between would find an object that looks alive. So the device's takes that step: while the count is -1 nobody can get
// hold of the object any more, the weak references to it become nil, and only then does the count go back to 0.

#import <Foundation/Foundation.h>
#include <dlfcn.h>
#include <objc/message.h>
#include <objc/runtime.h>

#include <atomic>

#include "runtime/Methods.h"
#include "runtime/WeakReferences.h"
#include "runtime/WeakTable.h"

namespace {

using namespace qvdevice;

using Count = std::atomic<std::intptr_t>;
static_assert(sizeof(Count) == sizeof(void *) && Count::is_always_lock_free);

constexpr std::intptr_t kGone = -1;

Count &extraCountOf(id object) { return *(reinterpret_cast<Count *>(object) - 1); }

/// Foundation's own, which changes that count; a class that has another -retain counts in its own way.
IMP rootRetain;

bool countsByItself(id object) {
  return class_getMethodImplementation(object_getClass(object), @selector(retain)) != rootRetain;
}

/// Objects are released while this library's own selectors are still unknown to the runtime.
SEL deallocSelector;

void NSObject_release(id self, SEL) {
  if (!NSDecrementExtraRefCountWasZero(self)) return;
  implementationAs<void (*)(id, SEL)>(objc_msg_lookup(self, deallocSelector))(self, deallocSelector);
}

// The weak references that are still there: those to an object of a class with a count of its own, or made by -dealloc.
IMP rootDealloc;

void NSObject_dealloc(id self, SEL command) {
  if (mayHaveWeakReferences(self)) clearWeakReferences(self);
  implementationAs<void (*)(id, SEL)>(rootDealloc)(self, command);
}

__attribute__((constructor(102))) void takeOverTheLastRelease() {
  const Class root = objc_getClass("NSObject");
  const Method dealloc = class_getInstanceMethod(root, sel_registerName("dealloc"));
  rootDealloc = method_setImplementation(dealloc, asImplementation(NSObject_dealloc));
  const Method release = class_getInstanceMethod(root, sel_registerName("release"));
  rootRetain = class_getMethodImplementation(root, sel_registerName("retain"));
  deallocSelector = sel_registerName("dealloc");
  method_setImplementation(release, asImplementation(NSObject_release));
}

} // namespace

// A class with a count of its own says itself whether a weak reference to its object can still be used.
@implementation NSObject (QVDeviceWeakReferences)

- (BOOL)retainWeakReference {
  if (countsByItself(self)) {
    [self retain];
    return YES;
  }
  Count &count = extraCountOf(self);
  std::intptr_t seen = count.load(std::memory_order_relaxed);
  while (seen > kGone) {
    if (count.compare_exchange_weak(seen, seen + 1, std::memory_order_relaxed)) return YES;
  }
  return NO;
}

- (BOOL)allowsWeakReference {
  return countsByItself(self) || extraCountOf(self).load(std::memory_order_relaxed) > kGone;
}

@end

BOOL NSDecrementExtraRefCountWasZero(id object) {
  Count &count = extraCountOf(object);
  const std::intptr_t before = count.fetch_sub(1, std::memory_order_acq_rel);
  if (before > 0) return NO;
  if (before < 0) {
    count.store(0, std::memory_order_relaxed);
    [NSException
         raise:NSInternalInconsistencyException
        format:@"NSDecrementExtraRefCount() decremented too far for an object at %p", static_cast<void *>(object)];
  }
  // Whoever made a weak reference held the object then, and let go of it before us: the table shows it by now.
  if (mayHaveWeakReferences(object)) clearWeakReferences(object);
  count.store(0, std::memory_order_relaxed);
  return YES;
}

void NSDeallocateObject(id object) {
  static const auto original = reinterpret_cast<void (*)(id)>(::dlsym(RTLD_NEXT, "NSDeallocateObject"));
  // Some classes of Foundation come here past the root's -dealloc.
  if (object != nil && mayHaveWeakReferences(object)) clearWeakReferences(object);
  original(object);
}
