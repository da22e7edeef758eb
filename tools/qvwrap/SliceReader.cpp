#include "SliceReader.h"

#include <algorithm>

#include "Failure.h"
#include "MachOFormat.h"

namespace qvwrap {

using namespace macho;

SliceReader::SliceReader(View bytes, Slice& slice, std::string what)
    : bytes_(bytes), slice_(slice), what_(std::move(what)), lowest_(bytes.size()) {}

void SliceReader::read() {
  slice_.commandCount = word(16);
  slice_.commandBytes = word(20);
  if (slice_.commandBytes > bytes_.size() - kHeaderSize) {
    throw Failure(kRefused, what_ + " is truncated: it ends within its load commands (" + slice_.architecture + ")");
  }
  commandsEnd_ = kHeaderSize + slice_.commandBytes;
  std::size_t at = kHeaderSize;
  for (number_ = 1; number_ <= slice_.commandCount; ++number_) {
    if (commandsEnd_ - at < 8) {
      malformed("the space for load commands ends before command " + std::to_string(number_));
    }
    const std::size_t size = word(at + 4);
    if (size < 8 || size % 8 != 0 || size > commandsEnd_ - at) {
      malformed("load command " + std::to_string(number_) + " has a size of " + std::to_string(size) + " bytes");
    }
    command(word(at), at, size);
    at += size;
  }
  if (at != commandsEnd_) {
    malformed("the load commands take " + std::to_string(at - kHeaderSize) + " bytes, and the header says " +
              std::to_string(slice_.commandBytes));
  }
  findRoom();
}

void SliceReader::command(std::uint32_t kind, std::size_t at, std::size_t size) {
  switch (kind) {
  case kSegment64:
    return segment(at, size);
  case kLoadDylib:
  case kLoadWeakDylib:
  case kReexportDylib:
  case kLazyLoadDylib:
  case kLoadUpwardDylib:
  case kIdDylib:
    return dylib(kind, at, size);
  case kRpath:
    return runpath(at, size);
  case kEncryptionInfo:
  case kEncryptionInfo64:
    needs(size, 20);
    slice_.encrypted = slice_.encrypted || word(at + 16) != 0;
    return table(at + 8, 1, "the encrypted range");
  case kCodeSignature:
    slice_.isSigned = true;
    [[fallthrough]];
  case kSegmentSplitInfo:
  case kFunctionStarts:
  case kDataInCode:
  case kDylibCodeSignDrs:
  case kLinkerOptimizationHint:
  case kExportsTrie:
  case kChainedFixups:
    needs(size, 16);
    return table(at + 8, 1, kind == kCodeSignature ? "the signature" : "the linker's data");
  case kDyldInfo:
  case kDyldInfoOnly:
    needs(size, 48);
    for (std::size_t pair = at + 8; pair < at + 48; pair += 8) {
      table(pair, 1, "the linker's data");
    }
    return;
  case kSymtab:
    needs(size, 24);
    table(at + 8, 16, "the symbol table");
    return table(at + 16, 1, "the string table");
  case kDysymtab:
    needs(size, 80);
    table(at + 56, 4, "the table of indirect symbols");
    table(at + 64, 8, "the table of external relocations");
    return table(at + 72, 8, "the table of local relocations");
  case kNote:
    needs(size, 40);
    return content(little64(bytes_, at + 24), little64(bytes_, at + 32), "a note");
  case kVersionMinIPhoneOS:
    needs(size, 16);
    // This command is older than the difference between device and simulator; the processor tells.
    slice_.platform = slice_.architecture == "x86_64" ? kPlatformIOSSimulator : kPlatformIOS;
    slice_.oldestRelease.packed = word(at + 8);
    return;
  case kBuildVersion:
    needs(size, 24);
    slice_.platform = word(at + 8);
    slice_.oldestRelease.packed = word(at + 12);
    return;
  default:
    return;
  }
}

void SliceReader::segment(std::size_t at, std::size_t size) {
  needs(size, 72);
  const std::string_view field = textOf(bytes_.subspan(at + 8, 16));
  const std::string name = "segment " + std::string(field.substr(0, field.find('\0')));
  const std::uint64_t offset = little64(bytes_, at + 40);
  const std::uint64_t length = little64(bytes_, at + 48);
  // The segment at the beginning holds header and commands themselves; what else it holds are its sections.
  if (offset == 0) {
    fits(0, length, name);
  } else {
    content(offset, length, name);
  }
  const std::uint32_t sections = word(at + 64);
  if (sections != (size - 72) / 80 || (size - 72) % 80 != 0) {
    malformed("load command " + std::to_string(number_) + " has no space for its " + std::to_string(sections) +
              " sections");
  }
  for (std::size_t section = at + 72; section < at + size; section += 80) {
    const std::uint32_t type = word(section + 64) & 0xff;
    if (type != 0x1 && type != 0xc && type != 0x12) { // filled with zeros when loaded: takes no space here
      content(word(section + 48), little64(bytes_, section + 40), "a section of " + name);
    }
    table(section + 56, 8, "a section's relocations");
  }
}

void SliceReader::dylib(std::uint32_t kind, std::size_t at, std::size_t size) {
  needs(size, kDylibSize);
  LibraryCommand command;
  command.offset = at;
  command.size = size;
  command.current.packed = word(at + 16);
  command.compatible.packed = word(at + 20);
  const std::string_view name = text(at, size, kDylibSize);
  command.name = name;
  const char* end = reinterpret_cast<const char*>(bytes_.data()) + at + size;
  const std::string_view behind(name.data() + name.size() + 1, end);
  command.note = Note::from(behind.substr(0, behind.find('\0')));
  if (kind == kIdDylib) {
    slice_.ownName = command;
  } else {
    slice_.libraries.push_back(command);
  }
}

void SliceReader::runpath(std::size_t at, std::size_t size) {
  needs(size, kRpathSize);
  slice_.runpaths.push_back({at, size, std::string(text(at, size, kRpathSize))});
}

/// The offset and the number of entries that stand at `at`.
void SliceReader::table(std::size_t at, std::size_t entrySize, const char* name) {
  content(word(at), std::uint64_t{word(at + 4)} * entrySize, name);
}

void SliceReader::content(std::uint64_t offset, std::uint64_t size, const std::string& name) {
  if (size == 0) {
    return;
  }
  fits(offset, size, name);
  if (offset < commandsEnd_) {
    malformed(name + " lies over the header or the load commands");
  }
  lowest_ = std::min(lowest_, offset);
}

void SliceReader::fits(std::uint64_t offset, std::uint64_t size, const std::string& name) const {
  if (offset > bytes_.size() || size > bytes_.size() - offset) {
    throw Failure(kRefused, what_ + " is truncated: " + name + " ends beyond its end (" + slice_.architecture + ")");
  }
}

void SliceReader::needs(std::size_t size, std::size_t least) const {
  if (size < least) {
    malformed("load command " + std::to_string(number_) + " is too short for its kind");
  }
}

std::string_view SliceReader::text(std::size_t at, std::size_t size, std::size_t fixed) const {
  const std::size_t offset = word(at + 8);
  if (offset < fixed || offset >= size) {
    malformed("load command " + std::to_string(number_) + " has its text outside of itself");
  }
  const std::string_view whole = textOf(bytes_.subspan(at + offset, size - offset));
  const std::size_t length = whole.find('\0');
  if (length == std::string_view::npos) {
    malformed("load command " + std::to_string(number_) + " has a text without an end");
  }
  return whole.substr(0, length);
}

void SliceReader::findRoom() {
  const View padding = bytes_.subspan(commandsEnd_, lowest_ - commandsEnd_);
  // A byte that is not zero belongs to somebody, though no command tells of it.
  const auto used = std::ranges::find_if(padding, [](std::uint8_t byte) { return byte != 0; });
  slice_.room = static_cast<std::size_t>(used - padding.begin());
}

void SliceReader::malformed(const std::string& how) const {
  throw Failure(kRefused, what_ + " is malformed: " + how + " (" + slice_.architecture + ")");
}

} // namespace qvwrap
