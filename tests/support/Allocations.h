// How often a piece of work asks for memory.
#pragma once

#include <cstddef>

/// How often this thread has asked for memory since it started, by whatever function of the C library.
std::size_t allocations();

template <class Work> std::size_t allocationsIn(Work work) {
  const std::size_t before = allocations();
  work();
  return allocations() - before;
}
