#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace qvwrap {

using Bytes = std::vector<std::uint8_t>;
using View = std::span<const std::uint8_t>;

/// The `Size` bytes at `at`, least significant first. The caller has seen to it that they are there.
template <int Size> std::uint64_t little(View bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (int i = Size; i-- > 0;) {
    value = value << 8 | bytes[at + static_cast<std::size_t>(i)];
  }
  return value;
}

inline std::uint16_t little16(View bytes, std::size_t at) { return static_cast<std::uint16_t>(little<2>(bytes, at)); }
inline std::uint32_t little32(View bytes, std::size_t at) { return static_cast<std::uint32_t>(little<4>(bytes, at)); }
inline std::uint64_t little64(View bytes, std::size_t at) { return little<8>(bytes, at); }

/// The same, most significant first.
template <int Size> std::uint64_t big(View bytes, std::size_t at) {
  std::uint64_t value = 0;
  for (std::size_t i = 0; i < Size; ++i) {
    value = value << 8 | bytes[at + i];
  }
  return value;
}

template <int Size> void putLittle(std::span<std::uint8_t> bytes, std::size_t at, std::uint64_t value) {
  for (std::size_t i = 0; i < Size; ++i) {
    bytes[at + i] = static_cast<std::uint8_t>(value >> 8 * i);
  }
}

template <int Size> void appendLittle(Bytes& bytes, std::uint64_t value) {
  bytes.resize(bytes.size() + Size);
  putLittle<Size>(bytes, bytes.size() - Size, value);
}

inline void append(Bytes& bytes, View more) { bytes.insert(bytes.end(), more.begin(), more.end()); }
inline void append(Bytes& bytes, std::string_view text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

inline View viewOf(std::string_view text) { return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}; }
inline std::string_view textOf(View bytes) { return {reinterpret_cast<const char*>(bytes.data()), bytes.size()}; }

/// CRC-32 as in zip archives.
std::uint32_t checksum(View bytes);

} // namespace qvwrap
