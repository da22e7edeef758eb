// Pixels that one effect after the other works on.
#pragma once

#include "../platform/Accelerate/vImage.hpp"
#include "../platform/System/stdlib.hpp"

namespace qvsb {

/// A buffer of vImage's that owns its pixels.
class PixelBuffer {
public:
  PixelBuffer() = default;
  ~PixelBuffer() { free(buffer_.data); }
  PixelBuffer(const PixelBuffer&) = delete;
  PixelBuffer& operator=(const PixelBuffer&) = delete;

  /// The pixels of an image, or pixels whose content is anything. An error leaves no pixels.
  vImage_Error load(CGImageRef image);
  vImage_Error makeLike(const PixelBuffer& other);

  /// An image of the pixels, owned by the caller, which they go to without being copied where that is possible, and
  /// otherwise are freed. Null, and an error, without memory.
  CGImageRef turnIntoImage(vImage_Error& error);

  const vImage_Buffer* get() const { return &buffer_; }

private:
  vImage_Error keep(vImage_Error error);

  vImage_Buffer buffer_{};
};

} // namespace qvsb
