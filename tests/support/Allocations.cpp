#include "Allocations.h"

#include <cerrno>
#include <cstdlib>

#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#include <sanitizer/allocator_interface.h>
#endif

namespace {

constinit thread_local std::size_t count = 0;

} // namespace

std::size_t allocations() { return count; }

#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)

// The sanitizer has put its own functions in the C library's place, and tells.

namespace {

[[gnu::constructor]] void listen() {
  __sanitizer_install_malloc_and_free_hooks([](const volatile void*, std::size_t) { ++count; },
                                            [](const volatile void*) {});
}

} // namespace

#else

// A program's definitions come before the C library's, whose own names for them these are.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
  ++count;
  return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size) {
  ++count;
  return __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size) {
  ++count;
  return __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  ++count;
  return __libc_memalign(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  ++count;
  *memory = __libc_memalign(alignment, size);
  return *memory ? 0 : ENOMEM;
}
}

#endif
