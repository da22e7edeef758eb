#include "Note.h"

#include <charconv>
#include <cstdio>

namespace qvwrap {

static constexpr std::string_view kBegin = "qvwrap1 ";

std::string Note::text() const {
  char digits[9];
  std::snprintf(digits, sizeof digits, "%08x", checksum);
  return std::string(kBegin) + digits + (addedRunpath ? " rpath" : "") + (addedFolder ? " folder" : "");
}

std::optional<Note> Note::from(std::string_view text) {
  Note note;
  if (!text.starts_with(kBegin) || text.size() < kBegin.size() + 8) {
    return {};
  }
  const char* digits = text.data() + kBegin.size();
  const auto [end, error] = std::from_chars(digits, digits + 8, note.checksum, 16);
  if (error != std::errc() || end != digits + 8) {
    return {};
  }
  const std::string_view rest = text.substr(kBegin.size() + 8);
  note.addedRunpath = rest.find(" rpath") != std::string_view::npos;
  note.addedFolder = rest.find(" folder") != std::string_view::npos;
  // What is not exactly as this program writes it was written by somebody else.
  return note.text() == text ? std::optional(note) : std::nullopt;
}

} // namespace qvwrap
