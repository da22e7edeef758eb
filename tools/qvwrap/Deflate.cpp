#include "Deflate.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <stdexcept>

#include <zlib.h>

namespace qvwrap {

namespace {

constexpr int kRaw = -15; // a window of 32 KiB, and neither header nor check sum around the stream
constexpr std::size_t kStep = std::size_t{1} << 18;

/// Gives zlib the next bytes of `from`, as many as it can count.
void feed(z_stream& zlib, View& from) {
  if (zlib.avail_in == 0) {
    const std::size_t size = std::min<std::size_t>(from.size(), std::numeric_limits<uInt>::max());
    zlib.next_in = const_cast<Bytef*>(from.data());
    zlib.avail_in = static_cast<uInt>(size);
    from = from.subspan(size);
  }
}

/// Compresses; hands over each piece as it comes until `take` wants no more. Answers whether it took all.
bool deflate(View content, Recipe recipe, const std::function<bool(View)>& take) {
  z_stream zlib = {};
  if (deflateInit2(&zlib, recipe.level, Z_DEFLATED, kRaw, recipe.memory, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("zlib cannot be used");
  }
  Bytes piece(kStep);
  int state = Z_OK;
  bool wanted = true;
  while (state == Z_OK && wanted) {
    feed(zlib, content);
    zlib.next_out = piece.data();
    zlib.avail_out = static_cast<uInt>(piece.size());
    state = ::deflate(&zlib, content.empty() ? Z_FINISH : Z_NO_FLUSH);
    wanted = take(View(piece).first(piece.size() - zlib.avail_out));
  }
  deflateEnd(&zlib);
  return wanted && state == Z_STREAM_END;
}

} // namespace

std::optional<Bytes> inflated(View stream, std::size_t size) {
  z_stream zlib = {};
  if (inflateInit2(&zlib, kRaw) != Z_OK) {
    throw std::runtime_error("zlib cannot be used");
  }
  Bytes content;
  int state = Z_OK;
  while (state == Z_OK) {
    // Memory grows with what comes out, not with what the archive promises. One byte more than it should be tells.
    const std::size_t done = content.size();
    const std::size_t step = std::min(kStep, size - done + 1);
    content.resize(done + step);
    feed(zlib, stream);
    zlib.next_out = content.data() + done;
    zlib.avail_out = static_cast<uInt>(step);
    state = ::inflate(&zlib, Z_NO_FLUSH);
    content.resize(done + step - zlib.avail_out);
    if (content.size() > size) {
      break;
    }
  }
  const bool whole = state == Z_STREAM_END && zlib.avail_in == 0 && stream.empty() && content.size() == size;
  inflateEnd(&zlib);
  return whole ? std::optional(std::move(content)) : std::nullopt;
}

Bytes deflated(View content, Recipe recipe) {
  Bytes stream;
  deflate(content, recipe, [&](View piece) {
    append(stream, piece);
    return true;
  });
  return stream;
}

std::optional<Recipe> recipeOf(View content, View stream) {
  for (const int memory : {8, 9}) {
    for (const int level : {6, 9, 5, 1, 2, 3, 4, 7, 8}) {
      View rest = stream;
      // Another recipe is found out within its first piece, so trying them all costs little.
      const bool same = deflate(content, {level, memory}, [&](View piece) {
        if (piece.size() > rest.size() || !std::ranges::equal(piece, rest.first(piece.size()))) {
          return false;
        }
        rest = rest.subspan(piece.size());
        return true;
      });
      if (same && rest.empty()) {
        return Recipe{level, memory};
      }
    }
  }
  return {};
}

} // namespace qvwrap
