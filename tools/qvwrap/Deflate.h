#pragma once

#include <optional>

#include "Bytes.h"

namespace qvwrap {

/// How zlib made a compressed stream.
struct Recipe {
  int level = 6;
  int memory = 8;

  bool operator==(const Recipe&) const = default;
};

/// What a raw deflate stream stands for; nothing unless it is a whole one of exactly `size` bytes. Takes no more memory
/// than that.
std::optional<Bytes> inflated(View stream, std::size_t size);

Bytes deflated(View content, Recipe recipe);

/// The recipe by which zlib makes exactly this stream of this content; nothing when it was made by other means.
std::optional<Recipe> recipeOf(View content, View stream);

} // namespace qvwrap
