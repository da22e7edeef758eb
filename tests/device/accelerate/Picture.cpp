#include "Picture.h"

#include <random>

Picture::Picture(std::size_t width, std::size_t height, std::size_t padding)
    : width_(width), height_(height), rowBytes_(width * 4 + padding), bytes_(rowBytes_ * height, 0xA5) {}

Picture Picture::random(std::size_t width, std::size_t height, unsigned seed, std::size_t padding) {
  Picture picture(width, height, padding);
  std::minstd_rand next(seed);
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width * 4; ++x) {
      // The extremes often: they make the greatest sums.
      const auto value = next() >> 8;
      picture.bytes_[y * picture.rowBytes_ + x] = static_cast<std::uint8_t>((value & 0x300) == 0 ? 255 : value);
    }
  }
  return picture;
}

vImage_Buffer Picture::buffer() const { return part(0, 0, width_, height_); }

vImage_Buffer Picture::part(std::size_t x, std::size_t y, std::size_t width, std::size_t height) const {
  return {.data = const_cast<std::uint8_t*>(bytes_.data()) + y * rowBytes_ + x * 4,
          .height = height,
          .width = width,
          .rowBytes = rowBytes_};
}
