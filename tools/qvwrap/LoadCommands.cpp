#include "LoadCommands.h"

#include <algorithm>

#include "Failure.h"
#include "MachOFormat.h"

namespace qvwrap {

using namespace macho;

namespace {

Bytes dylibCommand(const LibraryCommand& library, const Note& note) {
  Bytes command;
  appendLittle<4>(command, kLoadDylib);
  appendLittle<4>(command, 0); // the size, below
  appendLittle<4>(command, kDylibSize);
  appendLittle<4>(command, 2); // the time stamp that linkers write
  appendLittle<4>(command, library.current.packed);
  appendLittle<4>(command, library.compatible.packed);
  append(command, kLibrary);
  command.push_back(0);
  append(command, note.text());
  command.push_back(0);
  command.resize((command.size() + 7) / 8 * 8);
  putLittle<4>(command, 4, command.size());
  return command;
}

Bytes rpathCommand() {
  Bytes command;
  appendLittle<4>(command, kRpath);
  appendLittle<4>(command, 0);
  appendLittle<4>(command, kRpathSize);
  append(command, kRunpath);
  command.push_back(0);
  command.resize((command.size() + 7) / 8 * 8);
  putLittle<4>(command, 4, command.size());
  return command;
}

bool findsFrameworks(const Slice& slice) {
  return std::ranges::any_of(slice.runpaths, [](const RunpathCommand& command) {
    const std::string_view path = command.path;
    return path == kRunpath || path == "@executable_path/Frameworks/" || path == "@loader_path/Frameworks" ||
           path == "@loader_path/Frameworks/";
  });
}

void setCommands(std::span<std::uint8_t> part, std::size_t count, std::size_t bytes) {
  putLittle<4>(part, 16, count);
  putLittle<4>(part, 20, bytes);
}

/// Takes `size` bytes of commands out at `at`; those behind move up.
void cut(std::span<std::uint8_t> part, std::size_t at, std::size_t size) {
  const std::size_t count = little32(part, 16);
  const std::size_t bytes = little32(part, 20);
  const std::span<std::uint8_t> rest = part.subspan(at, kHeaderSize + bytes - at);
  std::ranges::copy(rest.subspan(size), rest.begin());
  std::ranges::fill(rest.last(size), std::uint8_t{0});
  setCommands(part, count - 1, bytes - size);
}

} // namespace

void refuseUnlessWrappable(const std::vector<Slice>& slices, bool maySpoilSignature) {
  if (std::ranges::none_of(slices, &Slice::is64)) {
    throw Failure(kRefused, "its executable is 32-bit only, and the library is 64-bit");
  }
  std::uint32_t platform = 0;
  for (const Slice& slice : slices) {
    if (!slice.is64) {
      continue;
    }
    const std::string where = " (" + slice.architecture + ")";
    if (slice.library() != nullptr) {
      throw Failure(kRefused, "it is wrapped already: its executable loads QVSandbox" + where);
    }
    if (slice.encrypted) {
      throw Failure(kRefused, "its executable is encrypted" + where +
                                  ", as the App Store delivers it; wrap the app as its maker built it");
    }
    if (slice.platform == 0) {
      throw Failure(kRefused, "its executable does not say what platform it is made for" + where);
    }
    if (slice.platform != kPlatformIOS && slice.platform != kPlatformIOSSimulator) {
      throw Failure(kRefused, "its executable is made for " + platformName(slice.platform) +
                                  ", and the library for iOS and its simulator");
    }
    if (platform != 0 && platform != slice.platform) {
      throw Failure(kRefused, "its executable is made for iOS and for its simulator at once");
    }
    platform = slice.platform;
    if (slice.isSigned && !maySpoilSignature) {
      throw Failure(kRefused, "its executable is signed" + where +
                                  ", and wrapping spoils the signature; --invalidate-signature wraps it all the same");
    }
  }
}

Bytes addLibrary(View file, const std::vector<Slice>& slices, const LibraryCommand& library, bool addedFolder) {
  Bytes result(file.begin(), file.end());
  for (const Slice& slice : slices) {
    if (!slice.is64) {
      continue;
    }
    const Note note{checksum(file.subspan(slice.offset, slice.size)), !findsFrameworks(slice), addedFolder};
    Bytes commands = note.addedRunpath ? rpathCommand() : Bytes();
    // Behind all others: the code refers to the libraries that it was linked with by their number in this order.
    append(commands, dylibCommand(library, note));
    if (commands.size() > slice.room) {
      throw Failure(kRefused, "its executable has no room for the library's load commands (" + slice.architecture +
                                  "): they take " + std::to_string(commands.size()) + " bytes and there are " +
                                  std::to_string(slice.room) + "; linking the app with -headerpad 0x1000 makes room");
    }
    const std::span<std::uint8_t> part = std::span(result).subspan(slice.offset, slice.size);
    std::ranges::copy(commands, part.begin() + static_cast<std::ptrdiff_t>(kHeaderSize + slice.commandBytes));
    setCommands(part, slice.commandCount + (note.addedRunpath ? 2 : 1), slice.commandBytes + commands.size());
  }
  return result;
}

Restored removeLibrary(View file, const std::vector<Slice>& slices) {
  Restored result{{file.begin(), file.end()}, true};
  for (const Slice& slice : slices) {
    if (!slice.is64) {
      continue;
    }
    const LibraryCommand* library = slice.library();
    if (library == nullptr) {
      throw Failure(kRefused, "its executable does not load QVSandbox (" + slice.architecture + ")");
    }
    if (!library->note) {
      throw Failure(kRefused, "its executable loads QVSandbox, but not by qvwrap's doing (" + slice.architecture +
                                  "), so what it was before is not known");
    }
    const std::span<std::uint8_t> part = std::span(result.file).subspan(slice.offset, slice.size);
    // The runpath stands before the library, so it is cut after it.
    cut(part, library->offset, library->size);
    if (library->note->addedRunpath) {
      const auto ours =
          std::find_if(slice.runpaths.rbegin(), slice.runpaths.rend(), [&](const RunpathCommand& command) {
            return command.path == kRunpath && command.offset < library->offset;
          });
      if (ours == slice.runpaths.rend()) {
        throw Failure(kRefused, "its executable has lost the search path that qvwrap added (" + slice.architecture +
                                    "), so what it was before is not known");
      }
      cut(part, ours->offset, ours->size);
    }
    result.original = result.original && checksum(part) == library->note->checksum;
  }
  return result;
}

} // namespace qvwrap
