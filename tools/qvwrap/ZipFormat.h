#pragma once

#include <cstddef>
#include <cstdint>

/// The numbers of the zip format that are needed here.
namespace qvwrap::zip {

inline constexpr std::uint32_t kLocal = 0x04034b50;
inline constexpr std::uint32_t kCentral = 0x02014b50;
inline constexpr std::uint32_t kEnd = 0x06054b50;
inline constexpr std::uint32_t kDescriptor = 0x08074b50;

inline constexpr std::size_t kLocalSize = 30; // without name and extra fields; so are the others
inline constexpr std::size_t kCentralSize = 46;
inline constexpr std::size_t kEndSize = 22;

inline constexpr std::uint16_t kEncrypted = 1;
inline constexpr std::uint16_t kHasDescriptor = 1 << 3; // sizes and check sum follow the data
inline constexpr std::uint16_t kStrongEncryption = 1 << 6;
inline constexpr std::uint16_t kUtf8 = 1 << 11;
inline constexpr std::uint16_t kMaskedHeaders = 1 << 13;

inline constexpr std::uint16_t kStored = 0;
inline constexpr std::uint16_t kDeflated = 8;

inline constexpr std::uint8_t kUnix = 3; // who made an entry, and so what its attributes mean
inline constexpr std::uint8_t kDarwin = 19;

} // namespace qvwrap::zip
