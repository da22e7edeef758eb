// The same work done in several ways, timed in turn and in changing order within one process, so that whatever else the
// machine does falls on all of them alike and their ratios hold where the times themselves do not.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <span>
#include <string>

#include <benchmark/benchmark.h>

namespace bench {

struct Variant {
  std::string name;
  /// Does the work and answers what one piece of it took, in nanoseconds.
  std::function<double()> measure;
};

double median(std::span<double> values);

/// For work that fills the memory's bandwidth or several processors, where nearly every turn is disturbed.
double least(std::span<double> values);

/// Lets each variant have one turn in each of the benchmark's iterations. What `typical` makes of a variant's turns
/// becomes the counter of its name. With the median a turn during which the machine was busy elsewhere counts no more
/// than any other.
void sideBySide(benchmark::State& state, std::span<const Variant> variants,
                double (*typical)(std::span<double>) = median);

/// What one of `times` pieces of work takes when `work` does them all.
template <class Work> double nanosecondsEach(std::size_t times, Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  const std::chrono::duration<double, std::nano> taken = std::chrono::steady_clock::now() - start;
  return taken.count() / static_cast<double>(times);
}

} // namespace bench
