#pragma once

#include <cstdint>

/// The numbers of the Mach-O format that are needed here.
namespace qvwrap::macho {

inline constexpr std::uint32_t kMagic64 = 0xfeedfacf;
inline constexpr std::uint32_t kMagic32 = 0xfeedface;
inline constexpr std::uint32_t kSwapped64 = 0xcffaedfe;
inline constexpr std::uint32_t kSwapped32 = 0xcefaedfe;
inline constexpr std::uint32_t kUniversal = 0xcafebabe;   // read as big-endian
inline constexpr std::uint32_t kUniversal64 = 0xcafebabf; // the same with 64-bit offsets

inline constexpr std::size_t kHeaderSize = 32; // of a 64-bit part
inline constexpr std::size_t kHeaderSize32 = 28;
inline constexpr std::size_t kDylibSize = 24; // LC_LOAD_DYLIB and its kind, without the name
inline constexpr std::size_t kRpathSize = 12;

inline constexpr std::uint32_t kArm = 12;
inline constexpr std::uint32_t kArm64 = 0x0100000c;
inline constexpr std::uint32_t kX86 = 7;
inline constexpr std::uint32_t kX86_64 = 0x01000007;
inline constexpr std::uint32_t kSubtypeMask = 0x00ffffff;
inline constexpr std::uint32_t kArm64e = 2;

inline constexpr std::uint32_t kPlatformIOS = 2;
inline constexpr std::uint32_t kPlatformIOSSimulator = 7;

enum Command : std::uint32_t {
  kSymtab = 0x2,
  kDysymtab = 0xb,
  kLoadDylib = 0xc,
  kIdDylib = 0xd,
  kLoadWeakDylib = 0x80000018,
  kSegment64 = 0x19,
  kRpath = 0x8000001c,
  kCodeSignature = 0x1d,
  kSegmentSplitInfo = 0x1e,
  kReexportDylib = 0x8000001f,
  kLazyLoadDylib = 0x20,
  kEncryptionInfo = 0x21,
  kDyldInfo = 0x22,
  kDyldInfoOnly = 0x80000022,
  kLoadUpwardDylib = 0x80000023,
  kVersionMinIPhoneOS = 0x25,
  kFunctionStarts = 0x26,
  kDataInCode = 0x29,
  kDylibCodeSignDrs = 0x2b,
  kEncryptionInfo64 = 0x2c,
  kLinkerOptimizationHint = 0x2e,
  kNote = 0x31,
  kBuildVersion = 0x32,
  kExportsTrie = 0x80000033,
  kChainedFixups = 0x80000034,
};

} // namespace qvwrap::macho
