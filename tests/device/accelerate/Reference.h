// What vImage is to answer, worked out pixel by pixel.
#pragma once

#include <array>
#include <cstdint>

#include "Picture.h"

/// The means of the boxes around the pixels of a region of `source`, which has the size of `like`: down the columns,
/// then along the rows, each to the nearest value.
Picture blurred(const Picture& source, std::uint32_t boxWidth, std::uint32_t boxHeight, const Picture& like,
                std::size_t x = 0, std::size_t y = 0);

struct Biases {
  std::array<std::int16_t, 4> before = {};
  std::array<std::int32_t, 4> after = {};
};

Picture multiplied(const Picture& source, const std::array<std::int16_t, 16>& matrix, std::int32_t divisor,
                   const Picture& like, const Biases& biases = {});
