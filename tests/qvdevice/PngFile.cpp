#include "PngFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <png.h>

PngFile::PngFile(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  read({std::istreambuf_iterator<char>(stream), {}});
}

PngFile::PngFile(const std::string& bytes) { read(bytes); }

void PngFile::read(const std::string& bytes) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_memory(&image, bytes.data(), bytes.size()) == 0) {
    return;
  }
  image.format = PNG_FORMAT_RGBA;
  pixels_.resize(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, pixels_.data(), 0, nullptr) == 0) {
    return;
  }
  width_ = image.width;
  height_ = image.height;
}

Dot PngFile::at(unsigned x, unsigned y) const {
  if (x >= width_ || y >= height_) {
    return {};
  }
  const std::size_t start = (std::size_t{y} * width_ + x) * 4;
  return {pixels_[start], pixels_[start + 1], pixels_[start + 2]};
}

int distance(const Dot& left, const Dot& right) {
  int largest = 0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    largest = std::max(largest, std::abs(left[i] - right[i]));
  }
  return largest;
}
