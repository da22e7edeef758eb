#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qvwrap {

/// What --remove has to know about an executable, kept behind the library's name in the load command that qvwrap adds:
/// the loader reads that name up to its final zero and never looks further.
struct Note {
  std::uint32_t checksum = 0; // of the slice as it was
  bool addedRunpath = false;
  bool addedFolder = false; // the app had no Frameworks

  std::string text() const;
  /// Nothing when the text is not a note.
  static std::optional<Note> from(std::string_view text);
};

} // namespace qvwrap
