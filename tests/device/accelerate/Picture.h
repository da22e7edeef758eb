// Pictures to try vImage with.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <Accelerate/vImage_Types.h>

/// A picture whose rows may be followed by bytes that are nobody's business.
class Picture {
public:
  Picture(std::size_t width, std::size_t height, std::size_t padding = 0);

  /// Every byte at random, the same for the same seed.
  static Picture random(std::size_t width, std::size_t height, unsigned seed = 1, std::size_t padding = 0);

  vImage_Buffer buffer() const;
  /// A part of it, as a buffer of its own.
  vImage_Buffer part(std::size_t x, std::size_t y, std::size_t width, std::size_t height) const;

  std::size_t width() const { return width_; }
  std::size_t height() const { return height_; }
  std::uint8_t& at(std::size_t x, std::size_t y, std::size_t channel) {
    return bytes_[y * rowBytes_ + x * 4 + channel];
  }
  std::uint8_t at(std::size_t x, std::size_t y, std::size_t channel) const {
    return bytes_[y * rowBytes_ + x * 4 + channel];
  }
  const std::vector<std::uint8_t>& bytes() const { return bytes_; }

  bool operator==(const Picture&) const = default;

private:
  std::size_t width_;
  std::size_t height_;
  std::size_t rowBytes_;
  std::vector<std::uint8_t> bytes_;
};
