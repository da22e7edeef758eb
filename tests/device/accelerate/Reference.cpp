#include "Reference.h"

#include <algorithm>

namespace {

std::size_t within(std::int64_t place, std::size_t size) {
  return static_cast<std::size_t>(std::clamp<std::int64_t>(place, 0, static_cast<std::int64_t>(size) - 1));
}

/// The mean of the values at the places around `middle`, of which the first and the last go on.
template <class Value> std::uint8_t mean(std::int64_t middle, std::uint32_t box, std::size_t size, Value value) {
  const std::int64_t radius = box / 2;
  std::int64_t sum = 0;
  for (std::int64_t place = middle - radius; place <= middle + radius; ++place) {
    sum += value(within(place, size));
  }
  // Half of an odd box lies between its two middle sums, so this rounds to the nearest.
  return static_cast<std::uint8_t>((sum + radius) / box);
}

} // namespace

Picture blurred(const Picture& source, std::uint32_t boxWidth, std::uint32_t boxHeight, const Picture& like,
                std::size_t x0, std::size_t y0) {
  Picture columns(source.width(), like.height());
  for (std::size_t y = 0; y < like.height(); ++y) {
    for (std::size_t x = 0; x < source.width(); ++x) {
      for (std::size_t c = 0; c < 4; ++c) {
        columns.at(x, y, c) = mean(static_cast<std::int64_t>(y0 + y), boxHeight, source.height(),
                                   [&](std::size_t at) { return source.at(x, at, c); });
      }
    }
  }
  Picture result = like;
  for (std::size_t y = 0; y < like.height(); ++y) {
    for (std::size_t x = 0; x < like.width(); ++x) {
      for (std::size_t c = 0; c < 4; ++c) {
        result.at(x, y, c) = mean(static_cast<std::int64_t>(x0 + x), boxWidth, source.width(),
                                  [&](std::size_t at) { return columns.at(at, y, c); });
      }
    }
  }
  return result;
}

Picture multiplied(const Picture& source, const std::array<std::int16_t, 16>& matrix, std::int32_t divisor,
                   const Picture& like, const Biases& biases) {
  Picture result = like;
  for (std::size_t y = 0; y < like.height(); ++y) {
    for (std::size_t x = 0; x < like.width(); ++x) {
      for (std::size_t j = 0; j < 4; ++j) {
        std::int64_t sum = biases.after[j];
        for (std::size_t i = 0; i < 4; ++i) {
          sum += std::int64_t{matrix[4 * i + j]} * (source.at(x, y, i) + biases.before[i]);
        }
        result.at(x, y, j) = static_cast<std::uint8_t>(std::clamp<std::int64_t>(sum / divisor, 0, 255));
      }
    }
  }
  return result;
}
