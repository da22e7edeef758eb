#pragma once

#include <optional>

#include "Deflate.h"

namespace qvwrap {

/// The name of the entry that a record is kept in, beside Payload: the app itself holds nothing but the framework more.
inline constexpr const char* kUndoRecord = "qvwrap.undo";

/// What --remove has to know about an archive to make it what it was.
struct UndoRecord {
  std::uint64_t size = 0; // of the archive
  std::uint32_t checksum = 0;
  Head head; // of the executable's compressed form

  Bytes bytes() const;
  /// Nothing when it is not a record.
  static std::optional<UndoRecord> from(View bytes);
};

} // namespace qvwrap
