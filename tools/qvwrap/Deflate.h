#pragma once

#include <optional>

#include "Bytes.h"

namespace qvwrap {

/// What a raw deflate stream stands for; nothing unless it is a whole one of exactly `size` bytes. Takes no more memory
/// than that.
std::optional<Bytes> inflated(View stream, std::size_t size);

Bytes deflated(View content);

/// What of a stream was given up for another one that shares its end.
struct Head {
  std::uint64_t bits = 0; // how many of the old stream's
  std::uint64_t tail = 0; // the byte of the new one in which what they share begins, at the same bit of it
  Bytes bytes;            // those bits; those of the last byte behind them are zero

  bool operator==(const Head&) const = default;
};

struct Redeflated {
  Bytes stream;
  Head head;
};

/// A stream for `fresh`, which has the size of `old` and differs from it in its first part only, made of a new
/// beginning and, bit by bit, the rest of the stream for `old`. No compressor makes another's stream again; this way
/// only its beginning has to be kept for the way back.
Redeflated redeflated(View stream, View old, View fresh);

/// The stream that was given to `redeflated`. Nothing when `head` does not belong to `stream`.
std::optional<Bytes> restored(View stream, const Head& head);

} // namespace qvwrap
