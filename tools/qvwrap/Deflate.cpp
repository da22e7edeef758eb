#include "Deflate.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include <zlib.h>

namespace qvwrap {

namespace {

constexpr int kRaw = -15; // a window of 32 KiB, and neither header nor check sum around the stream
constexpr std::size_t kWindow = std::size_t{1} << 15;
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

/// Compresses. With Z_FINISH the stream ends; with Z_SYNC_FLUSH it may go on, at the beginning of a byte.
Bytes compress(View content, int end) {
  z_stream zlib = {};
  if (deflateInit2(&zlib, 6, Z_DEFLATED, kRaw, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("zlib cannot be used");
  }
  Bytes stream;
  Bytes piece(kStep);
  do {
    feed(zlib, content);
    zlib.next_out = piece.data();
    zlib.avail_out = static_cast<uInt>(piece.size());
    deflate(&zlib, content.empty() ? end : Z_NO_FLUSH);
    append(stream, View(piece).first(piece.size() - zlib.avail_out));
  } while (zlib.avail_out == 0 || !content.empty());
  deflateEnd(&zlib);
  return stream;
}

/// A place between two blocks of a stream.
struct Boundary {
  std::uint64_t bit = 0;    // in the stream
  std::size_t unpacked = 0; // bytes that the blocks before it stand for
};

/// The first boundary behind at least `least` unpacked bytes; nothing when the last block begins before.
std::optional<Boundary> boundaryBehind(View stream, std::size_t least) {
  z_stream zlib = {};
  if (inflateInit2(&zlib, kRaw) != Z_OK) {
    throw std::runtime_error("zlib cannot be used");
  }
  const std::size_t size = stream.size();
  Bytes piece(kStep);
  std::size_t unpacked = 0;
  std::optional<Boundary> found;
  int state = Z_OK;
  while (state == Z_OK && !found) {
    feed(zlib, stream);
    zlib.next_out = piece.data();
    zlib.avail_out = static_cast<uInt>(piece.size());
    state = inflate(&zlib, Z_BLOCK);
    unpacked += piece.size() - zlib.avail_out;
    const bool between = (zlib.data_type & 128) != 0;
    if (state == Z_OK && between && unpacked >= least) {
      const std::size_t read = size - stream.size() - zlib.avail_in;
      found = Boundary{read * 8 - static_cast<unsigned>(zlib.data_type & 7), unpacked};
    }
  }
  inflateEnd(&zlib);
  return found;
}

/// Adds bits to a stream, the lowest first.
class BitWriter {
public:
  explicit BitWriter(Bytes& stream) : stream_(stream) {}

  unsigned phase() const { return phase_; }
  void add(unsigned value, int count) {
    for (int i = 0; i < count; ++i) {
      if (phase_ == 0) {
        stream_.push_back(0);
      }
      stream_.back() = static_cast<std::uint8_t>(stream_.back() | (value >> i & 1) << phase_);
      phase_ = (phase_ + 1) % 8;
    }
  }

private:
  Bytes& stream_;
  unsigned phase_ = 0;
};

/// An empty block of 10 bits, with the codes that the format fixes.
void addEvenBlock(BitWriter& bits) {
  bits.add(0, 1); // not the last block
  bits.add(1, 2); // fixed codes
  bits.add(0, 7); // end of block
}

/// An empty block of 91 bits, with codes of its own: of one bit each for the byte 0 and the end of the block, and for
/// one distance.
void addOddBlock(BitWriter& bits) {
  bits.add(0, 1); // not the last block
  bits.add(2, 2); // own codes
  bits.add(0, 5); // 257 codes for bytes, lengths and the end
  bits.add(0, 5); // 1 for distances
  bits.add(14,
           4); // 18 for the lengths of these codes: of one bit for "zero many times", the third, and "one", the last
  for (int i = 0; i < 18; ++i) {
    bits.add(i == 2 || i == 17 ? 1 : 0, 3);
  }
  bits.add(0, 1); // byte 0: one bit
  bits.add(1, 1); // no code for 138 more
  bits.add(138 - 11, 7);
  bits.add(1, 1); // nor for 117 more
  bits.add(117 - 11, 7);
  bits.add(0, 1); // the end: one bit
  bits.add(0, 1); // the distance: one bit
  bits.add(1, 1); // the end
}

/// Brings a stream that stands at the beginning of a byte to bit `phase` of one, with blocks that stand for nothing.
void advanceTo(Bytes& stream, unsigned phase) {
  BitWriter bits(stream);
  if (phase % 2 != 0) {
    addOddBlock(bits);
  }
  while (bits.phase() != phase) {
    addEvenBlock(bits);
  }
}

std::uint8_t lowBits(std::uint8_t byte, unsigned count) {
  return static_cast<std::uint8_t>(byte & ((1U << count) - 1));
}

/// Adds `stream` from a bit of its byte `at` on to one that ends at the same bit of a byte.
void join(Bytes& begun, View stream, std::size_t at, unsigned phase) {
  if (phase != 0) {
    begun.back() = static_cast<std::uint8_t>(begun.back() | (stream[at] - lowBits(stream[at], phase)));
    ++at;
  }
  append(begun, stream.subspan(at));
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
    state = inflate(&zlib, Z_NO_FLUSH);
    content.resize(done + step - zlib.avail_out);
    if (content.size() > size) {
      break;
    }
  }
  const bool whole = state == Z_STREAM_END && zlib.avail_in == 0 && stream.empty() && content.size() == size;
  inflateEnd(&zlib);
  return whole ? std::optional(std::move(content)) : std::nullopt;
}

Bytes deflated(View content) { return compress(content, Z_FINISH); }

Redeflated redeflated(View stream, View old, View fresh) {
  std::size_t changed = old.size();
  while (changed > 0 && old[changed - 1] == fresh[changed - 1]) {
    --changed;
  }
  Redeflated result;
  // Blocks further on than this do not refer back to what has changed.
  if (const std::optional<Boundary> boundary = boundaryBehind(stream, changed + kWindow)) {
    const auto phase = static_cast<unsigned>(boundary->bit % 8);
    const std::size_t whole = boundary->bit / 8;
    result.head.bits = boundary->bit;
    append(result.head.bytes, stream.first(whole));
    if (phase != 0) {
      result.head.bytes.push_back(lowBits(stream[whole], phase));
    }
    result.stream = compress(fresh.first(boundary->unpacked), Z_SYNC_FLUSH);
    advanceTo(result.stream, phase);
    result.head.tail = result.stream.size() - (phase != 0 ? 1 : 0);
    join(result.stream, stream, whole, phase);
    const std::optional<Bytes> check = inflated(result.stream, fresh.size());
    if (check && std::ranges::equal(*check, fresh)) {
      return result;
    }
  }
  result.stream = deflated(fresh);
  result.head = {stream.size() * 8, result.stream.size(), {stream.begin(), stream.end()}};
  return result;
}

std::optional<Bytes> restored(View stream, const Head& head) {
  const auto phase = static_cast<unsigned>(head.bits % 8);
  if (head.bytes.size() != head.bits / 8 + (phase != 0 ? 1 : 0) || head.tail > stream.size() ||
      (phase != 0 && (head.tail == stream.size() || lowBits(head.bytes.back(), phase) != head.bytes.back()))) {
    return {};
  }
  Bytes old = head.bytes;
  join(old, stream, head.tail, phase);
  return old;
}

} // namespace qvwrap
