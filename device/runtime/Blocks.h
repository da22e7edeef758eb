#pragma once

#include <objc/objc.h>

#include <cstddef>

namespace qvdevice {

/// A block as every compiler lays it out.
struct Block {
  void* isa;
  int flags;
  int reserved;
  void (*invoke)(void*, ...);
  struct Descriptor* descriptor;
};

struct Descriptor {
  unsigned long reserved;
  unsigned long size;
  // Present when kBlockHasCopyDispose is set.
  void (*copy)(void* to, const void* from);
  void (*dispose)(const void* block);
};

enum : int {
  kBlockCountMask = 0xffff,
  kBlockNeedsFree = 1 << 24,
  kBlockHasCopyDispose = 1 << 25,
  kBlockIsGlobal = 1 << 28,
};

/// Flags and count are one word, which other threads change.
inline int flagsOf(const void* block) {
  return __atomic_load_n(&static_cast<const Block*>(block)->flags, __ATOMIC_RELAXED);
}

/// True for a block on the heap, which is counted.
inline bool isCounted(const void* block) { return (flagsOf(block) & kBlockNeedsFree) != 0; }

/// How many references a heap block has; 1 for one that is not counted.
unsigned blockCount(const void* block);

/// Retains a heap block unless its last reference is gone.
bool retainBlockIfAlive(void* block);

/// A variable marked __block, as every compiler lays it out.
struct ByrefVariable {
  void* isa;
  ByrefVariable* forwarding;
  int flags;
  int size;
  // Present when kBlockHasCopyDispose is set.
  void (*keep)(void* to, void* from);
  void (*destroy)(void* variable);
};

/// What a captured variable is, in the arguments of the copy and dispose helpers.
enum : int {
  kFieldIsObject = 3,
  kFieldIsBlock = 7,
  kFieldIsByref = 8,
  kFieldIsWeak = 16,
  kByrefCaller = 128,
};

inline constexpr std::size_t kClassWords = 32;

} // namespace qvdevice

extern "C" {

// The classes of blocks. Compilers refer to them as arrays.
extern void* _NSConcreteStackBlock[qvdevice::kClassWords];
extern void* _NSConcreteMallocBlock[qvdevice::kClassWords];
extern void* _NSConcreteGlobalBlock[qvdevice::kClassWords];
extern void* _NSConcreteAutoBlock[qvdevice::kClassWords];
extern void* _NSConcreteFinalizingBlock[qvdevice::kClassWords];
extern void* _NSConcreteWeakBlockVariable[qvdevice::kClassWords];

void* _Block_copy(const void* block);
void _Block_release(const void* block);
void _Block_object_assign(void* to, const void* object, int flags);
void _Block_object_dispose(const void* object, int flags);
}
