#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Bytes.h"
#include "Note.h"

namespace qvwrap {

/// The name under which an app loads the library, and the folder in which it then finds it.
inline constexpr std::string_view kLibrary = "@rpath/QVSandbox.framework/QVSandbox";
inline constexpr std::string_view kRunpath = "@executable_path/Frameworks";

enum class FileType : std::uint32_t { kExecutable = 2, kLibrary = 6 };

/// A release such as 12.0.1, or a library's version, in the 16.8.8 bits that Mach-O has for it.
struct Version {
  std::uint32_t packed = 0;

  std::string text() const;
  auto operator<=>(const Version&) const = default;
};

/// A load command that names a library.
struct LibraryCommand {
  std::size_t offset = 0; // in the slice
  std::size_t size = 0;
  std::string name;
  Version current;
  Version compatible;
  std::optional<Note> note; // what qvwrap left behind the name
};

struct RunpathCommand {
  std::size_t offset = 0; // in the slice
  std::size_t size = 0;
  std::string path;
};

/// One architecture's part of a Mach-O file; all of a thin one. Of a 32-bit part only the first block is known.
struct Slice {
  std::size_t offset = 0; // in the file
  std::size_t size = 0;
  std::string architecture; // as lipo calls it
  bool is64 = true;

  std::uint32_t commandCount = 0;
  std::uint32_t commandBytes = 0;
  std::size_t room = 0; // unused bytes, all zero, between the load commands and what follows them
  std::uint32_t platform = 0;
  Version oldestRelease;
  bool encrypted = false;
  bool isSigned = false;
  std::vector<LibraryCommand> libraries; // to be loaded with it, in order
  std::optional<LibraryCommand> ownName; // of a library
  std::vector<RunpathCommand> runpaths;

  /// The command that loads QVSandbox; null when there is none.
  const LibraryCommand* library() const;
};

/// "iOS", "the iOS simulator".
std::string platformName(std::uint32_t platform);

/// The parts of a thin or universal file. Every offset in them has been seen to lie in its part, every command in the
/// space for commands. Throws Failure; its sentence begins with `what`, such as "its executable".
std::vector<Slice> readMachO(View file, FileType type, const std::string& what);

} // namespace qvwrap
