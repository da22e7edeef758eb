// Blocks, both ways, after the published block ABI.
//
// Received: `Block<void(BOOL)>` is a handle that is called like a function. Made: `makeBlock<void(BOOL)>(lambda)` is a
// block on the stack; whoever keeps it copies it (Copied<>, or the callee itself), which copies the lambda's captures.
#pragma once

#include <new>
#include <utility>

#include "encoding.hpp"

namespace qvsb {

namespace detail {

struct BlockDescriptor {
  unsigned long reserved;
  unsigned long size;
  void (*copy)(void* to, const void* from);
  void (*dispose)(const void* block);
  const char* signature;
};

struct BlockHeader {
  void* isa;
  int flags;
  int reserved;
  IMP invoke;
  const BlockDescriptor* descriptor;
};

inline constexpr int kBlockHasCopyDispose = 1 << 25;
inline constexpr int kBlockUsesStret = 1 << 29;
inline constexpr int kBlockHasSignature = 1 << 30;

/// The flags of a block made here. Whoever turns it into a method asks how it returns its result.
template <class R> consteval int blockFlags() {
#if QVSB_APPLE_RUNTIME && defined(__x86_64__)
  return kBlockHasCopyDispose | kBlockHasSignature | (returnsInMemory<R>() ? kBlockUsesStret : 0);
#else
  return kBlockHasCopyDispose | kBlockHasSignature;
#endif
}

} // namespace detail

/// A block received from somebody else, borrowed. Calling a nil block ends the process, as in Objective-C.
template <class R, class... A> class Block<R(A...)> : public Object {
public:
  using Object::Object;

  R operator()(A... arguments) const {
    // SAFETY: a block's function takes the block and then the declared arguments.
    const auto* header = reinterpret_cast<const volatile detail::BlockHeader*>(raw());
    return reinterpret_cast<R (*)(id, A...)>(header->invoke)(raw(), arguments...);
  }
};

/// A block made from a function object, where it was made: on the stack.
template <class Signature, class F> class StackBlock;

template <class R, class... A, class F> class StackBlock<R(A...), F> {
public:
  explicit StackBlock(F function)
      : header_{static_cast<void*>(_NSConcreteStackBlock), detail::blockFlags<R>(), 0, reinterpret_cast<IMP>(&invoke),
                &descriptor},
        function_(std::move(function)) {}
  // The runtime copies blocks; C++ must not.
  StackBlock(const StackBlock&) = delete;
  StackBlock& operator=(const StackBlock&) = delete;

  Block<R(A...)> get() { return Block<R(A...)>(reinterpret_cast<id>(this)); }
  operator Block<R(A...)>() { return get(); }

private:
  static R invoke(StackBlock* self, A... arguments) { return self->function_(arguments...); }
  /// The runtime has moved the bytes already; the captures are then copied properly over them.
  static void copy(void* to, const void* from) {
    new (&static_cast<StackBlock*>(to)->function_) F(static_cast<const StackBlock*>(from)->function_);
  }
  static void dispose(const void* block) {
    const_cast<StackBlock*>(static_cast<const StackBlock*>(block))->function_.~F();
  }
  static const detail::BlockDescriptor descriptor;

  detail::BlockHeader header_;
  F function_;
};

template <class R, class... A, class F>
constinit const detail::BlockDescriptor StackBlock<R(A...), F>::descriptor{0, sizeof(StackBlock), &copy, &dispose,
                                                                           detail::blockEncodingText<R, A...>.data()};

template <class Signature, class F> StackBlock<Signature, F> makeBlock(F function) {
  return StackBlock<Signature, F>(std::move(function));
}

} // namespace qvsb
