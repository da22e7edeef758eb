#include "MachO.h"

#include <algorithm>

#include "Failure.h"
#include "MachOFormat.h"
#include "SliceReader.h"

namespace qvwrap {

using namespace macho;

namespace {

std::string architectureName(std::uint32_t type, std::uint32_t subtype) {
  subtype &= kSubtypeMask;
  if (type == kArm64) {
    return subtype == kArm64e ? "arm64e" : "arm64";
  }
  if (type == kArm) {
    return subtype == 11 ? "armv7s" : subtype == 9 ? "armv7" : "arm";
  }
  if (type == kX86_64) {
    return "x86_64";
  }
  return type == kX86 ? "i386" : "cpu " + std::to_string(type);
}

/// The architecture and kind of the part that is all of `part`.
Slice readPart(View part, FileType type, const std::string& what) {
  if (part.size() < 4) {
    throw Failure(kRefused, what + " is not a Mach-O file");
  }
  const std::uint32_t magic = little32(part, 0);
  if (magic == kSwapped64 || magic == kSwapped32) {
    throw Failure(kRefused, what + " is made for big-endian processors, which no iPhone or iPad has");
  }
  if (magic != kMagic64 && magic != kMagic32) {
    throw Failure(kRefused, what + " is not a Mach-O file");
  }
  Slice slice;
  slice.size = part.size();
  slice.is64 = magic == kMagic64;
  if (part.size() < (slice.is64 ? kHeaderSize : kHeaderSize32)) {
    throw Failure(kRefused, what + " is truncated: it ends within its header");
  }
  slice.architecture = architectureName(little32(part, 4), little32(part, 8));
  if (little32(part, 12) != static_cast<std::uint32_t>(type)) {
    throw Failure(kRefused, what + (type == FileType::kExecutable ? " is a Mach-O file, but no executable"
                                                                  : " is a Mach-O file, but no dynamic library"));
  }
  if (slice.is64) {
    SliceReader(part, slice, what).read();
  }
  return slice;
}

std::vector<Slice> readUniversal(View file, FileType type, const std::string& what) {
  const bool wide = big<4>(file, 0) == kUniversal64;
  const std::size_t entry = wide ? 32 : 20;
  const std::uint64_t count = big<4>(file, 4);
  // Java's class files begin alike; what they have in this place is larger than any number of architectures.
  if (count > 32) {
    throw Failure(kRefused, what + " is not a Mach-O file");
  }
  if (count == 0) {
    throw Failure(kRefused, what + " is malformed: a universal file without an architecture");
  }
  const std::size_t tableEnd = 8 + count * entry;
  if (file.size() < tableEnd) {
    throw Failure(kRefused, what + " is truncated: it ends within its list of architectures");
  }
  std::vector<Slice> slices;
  for (std::size_t at = 8; at < tableEnd; at += entry) {
    const std::uint64_t offset = wide ? big<8>(file, at + 8) : big<4>(file, at + 8);
    const std::uint64_t size = wide ? big<8>(file, at + 16) : big<4>(file, at + 12);
    const std::string name = architectureName(static_cast<std::uint32_t>(big<4>(file, at)),
                                              static_cast<std::uint32_t>(big<4>(file, at + 4)));
    const auto refuse = [&](const char* how, const std::string& why) {
      throw Failure(kRefused, what + " is " + how + ": its part for " + name + " " + why);
    };
    if (offset > file.size() || size > file.size() - offset) {
      refuse("truncated", "ends beyond its end");
    }
    if (offset < tableEnd) {
      refuse("malformed", "lies over the list of architectures");
    }
    Slice slice = readPart(file.subspan(offset, size), type, what);
    slice.offset = offset;
    if (slice.architecture != name) {
      refuse("malformed", "is made for " + slice.architecture);
    }
    slices.push_back(std::move(slice));
  }
  std::vector<const Slice*> order;
  order.reserve(slices.size());
  for (const Slice& slice : slices) {
    order.push_back(&slice);
  }
  std::ranges::sort(order, {}, &Slice::offset);
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (order[i]->offset < order[i - 1]->offset + order[i - 1]->size) {
      throw Failure(kRefused, what + " is malformed: its parts for " + order[i - 1]->architecture + " and " +
                                  order[i]->architecture + " overlap");
    }
  }
  return slices;
}

} // namespace

std::string Version::text() const {
  const std::string two = std::to_string(packed >> 16) + "." + std::to_string(packed >> 8 & 0xff);
  return (packed & 0xff) == 0 ? two : two + "." + std::to_string(packed & 0xff);
}

const LibraryCommand* Slice::library() const {
  const auto found = std::ranges::find_if(libraries, [](const LibraryCommand& command) {
    return command.name == kLibrary || command.name.ends_with("/QVSandbox.framework/QVSandbox");
  });
  return found == libraries.end() ? nullptr : &*found;
}

std::string platformName(std::uint32_t platform) {
  static constexpr const char* names[] = {"an unknown platform",
                                          "macOS",
                                          "iOS",
                                          "tvOS",
                                          "watchOS",
                                          "bridgeOS",
                                          "Mac Catalyst",
                                          "the iOS simulator",
                                          "the tvOS simulator",
                                          "the watchOS simulator",
                                          "DriverKit",
                                          "visionOS",
                                          "the visionOS simulator"};
  return platform < std::size(names) ? names[platform] : "platform " + std::to_string(platform);
}

std::vector<Slice> readMachO(View file, FileType type, const std::string& what) {
  if (file.empty()) {
    throw Failure(kRefused, what + " is empty");
  }
  if (file.size() >= 8) {
    const std::uint64_t magic = big<4>(file, 0);
    if (magic == kUniversal || magic == kUniversal64) {
      return readUniversal(file, type, what);
    }
  }
  return {readPart(file, type, what)};
}

} // namespace qvwrap
