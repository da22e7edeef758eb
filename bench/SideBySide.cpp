#include "SideBySide.hpp"

#include <algorithm>
#include <numeric>
#include <random>
#include <vector>

namespace bench {

double median(std::span<double> values) {
  if (values.empty()) {
    return 0;
  }
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

double least(std::span<double> values) { return values.empty() ? 0 : std::ranges::min(values); }

void sideBySide(benchmark::State& state, std::span<const Variant> variants, double (*typical)(std::span<double>)) {
  std::vector<std::size_t> order(variants.size());
  std::iota(order.begin(), order.end(), 0U);
  std::vector<std::vector<double>> taken(variants.size());
  // In a fixed order each variant would always find the caches as the same other one left them. The seed is fixed: the
  // orders are the same in every run.
  std::minstd_rand shuffler(20110315);
  for ([[maybe_unused]] auto iteration : state) {
    std::ranges::shuffle(order, shuffler);
    for (const std::size_t turn : order) {
      taken[turn].push_back(variants[turn].measure());
    }
  }
  for (std::size_t i = 0; i < variants.size(); ++i) {
    state.counters[variants[i].name] = typical(taken[i]);
  }
}

} // namespace bench
