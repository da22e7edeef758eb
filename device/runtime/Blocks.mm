// The block runtime, by the published block ABI.
//
// The distribution's libBlocksRuntime does not do: a block's copy keeps the class of a stack block, and does not retain
// the objects that it captured. These functions stand before it in the link order.

#include "runtime/Blocks.h"

#import <Foundation/Foundation.h>

#include <cstdlib>
#include <cstring>

#include "runtime/WeakTable.h"

using namespace qvdevice;

namespace {

Block *asBlock(const void *block) { return static_cast<Block *>(const_cast<void *>(block)); }

/// Adds one reference, unless there are as many as can be counted: such a block stays for ever.
void increment(int *flags) {
  int seen = __atomic_load_n(flags, __ATOMIC_RELAXED);
  do {
    if ((seen & kBlockCountMask) == kBlockCountMask) return;
  } while (!__atomic_compare_exchange_n(flags, &seen, seen + 1, true, __ATOMIC_RELAXED, __ATOMIC_RELAXED));
}

/// Takes one reference away; true when it was the last.
bool decrement(int *flags) {
  int seen = __atomic_load_n(flags, __ATOMIC_RELAXED);
  do {
    if ((seen & kBlockCountMask) == kBlockCountMask || (seen & kBlockCountMask) == 0) return false;
  } while (!__atomic_compare_exchange_n(flags, &seen, seen - 1, true, __ATOMIC_ACQ_REL, __ATOMIC_RELAXED));
  return (seen & kBlockCountMask) == 1;
}

Block *copyToHeap(const Block *block) {
  const std::size_t size = block->descriptor->size;
  auto *copy = static_cast<Block *>(std::malloc(size));
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, block, size);
  copy->isa = _NSConcreteMallocBlock;
  copy->flags = (block->flags & ~kBlockCountMask) | kBlockNeedsFree | 1;
  if ((copy->flags & kBlockHasCopyDispose) != 0) copy->descriptor->copy(copy, block);
  return copy;
}

/// The one copy on the heap that the function and all blocks which captured the variable share.
ByrefVariable *shareByref(ByrefVariable *variable) {
  ByrefVariable *shared = variable->forwarding;
  if ((__atomic_load_n(&shared->flags, __ATOMIC_RELAXED) & kBlockNeedsFree) != 0) {
    increment(&shared->flags);
    return shared;
  }
  const auto size = static_cast<std::size_t>(variable->size);
  shared = static_cast<ByrefVariable *>(std::malloc(size));
  if (shared == nullptr) return nullptr;
  std::memcpy(shared, variable, size);
  shared->isa = nullptr;
  // One for the block, one for the function whose frame holds the original.
  shared->flags = (variable->flags & ~kBlockCountMask) | kBlockNeedsFree | 2;
  shared->forwarding = shared;
  variable->forwarding = shared;
  if ((variable->flags & kBlockHasCopyDispose) != 0) variable->keep(shared, variable);
  return shared;
}

void releaseByref(ByrefVariable *variable) {
  variable = variable->forwarding;
  const int flags = __atomic_load_n(&variable->flags, __ATOMIC_RELAXED);
  if ((flags & kBlockNeedsFree) == 0 || !decrement(&variable->flags)) return;
  if ((flags & kBlockHasCopyDispose) != 0) variable->destroy(variable);
  std::free(variable);
}

} // namespace

void *_Block_copy(const void *object) {
  Block *block = asBlock(object);
  if (block == nullptr || (flagsOf(block) & kBlockIsGlobal) != 0) return block;
  if (!isCounted(block)) return copyToHeap(block);
  increment(&block->flags);
  return block;
}

void _Block_release(const void *object) {
  Block *block = asBlock(object);
  if (block == nullptr || !isCounted(block) || !decrement(&block->flags)) return;
  const id counted = reinterpret_cast<id>(block);
  if (mayHaveWeakReferences(counted)) clearWeakReferences(counted);
  if ((block->flags & kBlockHasCopyDispose) != 0) block->descriptor->dispose(block);
  std::free(block);
}

void _Block_object_assign(void *to, const void *object, int flags) {
  const void *kept = object;
  switch (flags & (kByrefCaller | kFieldIsByref | kFieldIsBlock)) {
  case kFieldIsObject:
    kept = [static_cast<id>(const_cast<void *>(object)) retain];
    break;
  case kFieldIsBlock:
    kept = _Block_copy(object);
    break;
  case kFieldIsByref:
    kept = shareByref(static_cast<ByrefVariable *>(const_cast<void *>(object)));
    break;
  default:
    // An object or block in a __block variable is not retained.
    break;
  }
  *static_cast<const void **>(to) = kept;
}

void _Block_object_dispose(const void *object, int flags) {
  switch (flags & (kByrefCaller | kFieldIsByref | kFieldIsBlock)) {
  case kFieldIsObject:
    [static_cast<id>(const_cast<void *>(object)) release];
    break;
  case kFieldIsBlock:
    _Block_release(object);
    break;
  case kFieldIsByref:
    releaseByref(static_cast<ByrefVariable *>(const_cast<void *>(object)));
    break;
  default:
    break;
  }
}

namespace qvdevice {

unsigned blockCount(const void *block) {
  const int flags = flagsOf(block);
  return (flags & kBlockNeedsFree) != 0 ? static_cast<unsigned>(flags & kBlockCountMask) : 1;
}

bool retainBlockIfAlive(void *block) {
  int *flags = &asBlock(block)->flags;
  int seen = __atomic_load_n(flags, __ATOMIC_RELAXED);
  if ((seen & kBlockNeedsFree) == 0) return true;
  do {
    if ((seen & kBlockCountMask) == 0) return false;
    if ((seen & kBlockCountMask) == kBlockCountMask) return true;
  } while (!__atomic_compare_exchange_n(flags, &seen, seen + 1, true, __ATOMIC_RELAXED, __ATOMIC_RELAXED));
  return true;
}

} // namespace qvdevice
