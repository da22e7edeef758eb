#pragma once

#include <optional>

#include "Deflate.h"

namespace qvwrap {

/// The name of the entry that a record is kept in, beside Payload, where no installer looks.
inline constexpr const char* kUndoRecord = "qvwrap.undo";

/// What --remove has to know about an archive to make it what it was: how the executable was compressed, or its
/// compressed form itself when zlib cannot make it again.
struct UndoRecord {
  std::uint64_t size = 0; // of the archive
  std::uint32_t checksum = 0;
  std::optional<Recipe> recipe;
  Bytes stream;

  Bytes bytes() const;
  /// Nothing when it is not a record.
  static std::optional<UndoRecord> from(View bytes);
};

} // namespace qvwrap
