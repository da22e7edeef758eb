#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Red, green, blue, of 255 each.
using Dot = std::array<int, 3>;

/// A picture, read to its pixels; empty when there is none.
class PngFile {
public:
  explicit PngFile(const std::filesystem::path& file);
  explicit PngFile(const std::string& bytes);

  unsigned width() const { return width_; }
  unsigned height() const { return height_; }
  /// Black outside of the picture.
  Dot at(unsigned x, unsigned y) const;

private:
  void read(const std::string& bytes);

  unsigned width_ = 0;
  unsigned height_ = 0;
  std::vector<std::uint8_t> pixels_;
};

/// The largest difference of a colour.
int distance(const Dot& left, const Dot& right);
