#include "Shortage.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>

// Under a sanitizer all memory is its own.
#ifdef QV_SANITIZED
#define REAL(NAME) __interceptor_##NAME
#else
#define REAL(NAME) __libc_##NAME
#endif

extern "C" {
void* REAL(malloc)(std::size_t size);
void* REAL(calloc)(std::size_t number, std::size_t size);
void* REAL(realloc)(void* memory, std::size_t size);
void* REAL(memalign)(std::size_t alignment, std::size_t size);
void REAL(free)(void* memory);
}

namespace {

constinit thread_local bool counting = false;
constinit thread_local int counted = 0;
constinit thread_local int first = 0;
constinit thread_local bool all = false;

/// Large pieces that are in use, found by their address.
constinit std::array<std::atomic<void*>, 4096> pieces{};
constinit std::atomic<int> inUse{0};

bool fails(std::size_t size) {
  if (!counting || size < shortage::kLarge) {
    return false;
  }
  const int number = counted++;
  return number == first || (all && number > first);
}

std::size_t slotOf(void* memory) {
  return (reinterpret_cast<std::uintptr_t>(memory) >> 4) * 2654435761U % pieces.size();
}

void* granted(void* memory, std::size_t size) {
  if (memory != nullptr && size >= shortage::kLarge) {
    for (std::size_t index = slotOf(memory), tries = 0; tries < pieces.size(); ++tries) {
      void* none = nullptr;
      if (pieces[(index + tries) % pieces.size()].compare_exchange_strong(none, memory)) {
        ++inUse;
        break;
      }
    }
  }
  return memory;
}

void givenBack(void* memory) {
  if (memory == nullptr) {
    return;
  }
  for (std::size_t index = slotOf(memory), tries = 0; tries < 64; ++tries) {
    void* wanted = memory;
    if (pieces[(index + tries) % pieces.size()].compare_exchange_strong(wanted, nullptr)) {
      --inUse;
      return;
    }
  }
}

} // namespace

namespace shortage {

void begin(int number, bool andAllAfter) {
  first = number;
  all = andAllAfter;
  counted = 0;
  counting = true;
}

int end() {
  counting = false;
  return counted;
}

int outstanding() { return inUse; }

} // namespace shortage

// A program's definitions come before the C library's and the sanitizer's.
extern "C" {

void* malloc(std::size_t size) { return fails(size) ? nullptr : granted(REAL(malloc)(size), size); }

void* calloc(std::size_t number, std::size_t size) {
  return fails(number * size) ? nullptr : granted(REAL(calloc)(number, size), number * size);
}

void* realloc(void* memory, std::size_t size) {
  if (fails(size)) {
    return nullptr;
  }
  givenBack(memory);
  return granted(REAL(realloc)(memory, size), size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return fails(size) ? nullptr : granted(REAL(memalign)(alignment, size), size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  if (fails(size)) {
    return ENOMEM;
  }
  *memory = granted(REAL(memalign)(alignment, size), size);
  return *memory != nullptr ? 0 : ENOMEM;
}

void free(void* memory) {
  givenBack(memory);
  REAL(free)(memory);
}
}
