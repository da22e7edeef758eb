#include "UndoRecord.h"

#include <cstdio>
#include <string>

namespace qvwrap {

Bytes UndoRecord::bytes() const {
  char line[96];
  const int length =
      std::snprintf(line, sizeof line, "qvwrap1 %llu %08x %d %d\n", static_cast<unsigned long long>(size), checksum,
                    recipe ? recipe->level : 0, recipe ? recipe->memory : 0);
  Bytes all;
  append(all, std::string_view(line, static_cast<std::size_t>(length)));
  append(all, View(stream));
  return all;
}

std::optional<UndoRecord> UndoRecord::from(View bytes) {
  const std::string_view text = textOf(bytes).substr(0, 96);
  const std::size_t end = text.find('\n');
  if (end == text.npos) {
    return {};
  }
  const std::string line(text.substr(0, end));
  unsigned long long size = 0;
  unsigned checksum = 0;
  Recipe recipe;
  if (std::sscanf(line.c_str(), "qvwrap1 %llu %x %d %d", &size, &checksum, &recipe.level, &recipe.memory) != 4) {
    return {};
  }
  UndoRecord record{size, checksum, {}, {}};
  if (recipe.level >= 1 && recipe.level <= 9 && recipe.memory >= 1 && recipe.memory <= 9) {
    record.recipe = recipe;
  } else {
    record.stream.assign(bytes.begin() + static_cast<std::ptrdiff_t>(end + 1), bytes.end());
  }
  // What is not exactly as this program writes it was written by somebody else.
  const Bytes again = record.bytes();
  return std::equal(again.begin(), again.end(), bytes.begin(), bytes.end()) ? std::optional(record) : std::nullopt;
}

} // namespace qvwrap
