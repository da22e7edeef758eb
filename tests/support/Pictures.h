// Pictures as tests make them and look at them: plain pixels on one side, the platform's images on the other.
#pragma once

#import <UIKit/UIKit.h>

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

namespace support {

/// Blue, green, red, alpha; colours have been multiplied by alpha.
using Pixel = std::array<std::uint8_t, 4>;

struct Picture {
  size_t width = 0;
  size_t height = 0;
  std::vector<Pixel> pixels;

  Picture() = default;
  Picture(size_t columns, size_t rows) : width(columns), height(rows), pixels(columns * rows) {}
  Picture(size_t columns, size_t rows, const std::function<Pixel(size_t x, size_t y)> &draw);

  Pixel &at(size_t x, size_t y) { return pixels[y * width + x]; }
  const Pixel &at(size_t x, size_t y) const { return pixels[y * width + x]; }

  bool operator==(const Picture &) const = default;
};

/// Something of everything: the same for the same size and seed. Opaque, or with all alphas.
Picture noise(size_t width, size_t height, bool opaque, unsigned seed = 1);

/// Without alpha the image skips the byte.
UIImage *imageOf(const Picture &picture, CGFloat scale = 1, bool opaque = false);
/// A grey image without alpha, from its values.
UIImage *grayImage(size_t width, size_t height, const std::function<std::uint8_t(size_t x, size_t y)> &draw,
                   CGFloat scale = 1);
/// The pixels of an image that was drawn by the device; empty for nil and for other layouts.
Picture pictureOf(UIImage *image);

/// The largest difference between two bytes at the same place; 256 when the sizes differ.
int distance(const Picture &left, const Picture &right);

} // namespace support
