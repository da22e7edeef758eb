#include <zlib.h>

#include "Bytes.h"

namespace qvwrap {

std::uint32_t checksum(View bytes) {
  return static_cast<std::uint32_t>(crc32_z(crc32_z(0, nullptr, 0), bytes.data(), bytes.size()));
}

} // namespace qvwrap
