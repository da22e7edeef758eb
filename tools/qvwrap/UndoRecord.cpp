#include "UndoRecord.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace qvwrap {

static constexpr std::size_t kLongestLine = 96;

Bytes UndoRecord::bytes() const {
  char line[kLongestLine];
  std::snprintf(line, sizeof line, "qvwrap1 %llu %08x %llu %llu\n", static_cast<unsigned long long>(size), checksum,
                static_cast<unsigned long long>(head.bits), static_cast<unsigned long long>(head.tail));
  Bytes all;
  append(all, std::string_view(line));
  append(all, View(head.bytes));
  return all;
}

std::optional<UndoRecord> UndoRecord::from(View bytes) {
  const std::string_view text = textOf(bytes).substr(0, kLongestLine);
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos) {
    return {};
  }
  const std::string line(text.substr(0, end));
  unsigned long long size = 0;
  unsigned checksum = 0;
  unsigned long long bits = 0;
  unsigned long long tail = 0;
  if (std::sscanf(line.c_str(), "qvwrap1 %llu %x %llu %llu", &size, &checksum, &bits, &tail) != 4) {
    return {};
  }
  UndoRecord record{size, checksum, {bits, tail, {}}};
  append(record.head.bytes, bytes.subspan(end + 1));
  // What is not exactly as this program writes it was written by somebody else.
  const Bytes again = record.bytes();
  return std::ranges::equal(again, bytes) ? std::optional(record) : std::nullopt;
}

} // namespace qvwrap
