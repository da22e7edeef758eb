#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Bytes.h"

namespace qvwrap {

/// A file or folder in a zip archive, as its central directory tells.
struct ZipEntry {
  std::string name; // a folder's ends with '/'
  std::uint16_t flags = 0;
  std::uint16_t method = 0;
  std::uint32_t checksum = 0;
  std::uint32_t compressedSize = 0;
  std::uint32_t size = 0;
  std::uint32_t time = 0;       // date and time of MS-DOS
  std::uint32_t attributes = 0; // permissions and kind in the upper half, if Unix made it
  bool fromUnix = false;

  // Where it lies in the archive.
  std::size_t central = 0;
  std::size_t centralSize = 0;
  std::size_t local = 0;
  std::size_t data = 0;

  std::size_t dataEnd() const { return data + compressedSize; }
  bool isFolder() const { return name.ends_with('/'); }
  bool isLink() const { return fromUnix && (attributes >> 28) == 0xa; }
};

struct ZipArchive {
  View file;
  std::vector<ZipEntry> entries; // in the order of the central directory
  std::size_t central = 0;
  std::size_t end = 0; // where the end record begins

  const ZipEntry* find(std::string_view name) const;
};

/// Reads an archive and holds against each other all that it says twice. Throws Failure: for what is no archive, is
/// truncated or malformed, or has names that lead out of it, names twice, or entries that overlap.
ZipArchive readZip(View file);

/// What an entry holds, no more than `most` bytes. Throws Failure.
Bytes contentOf(const ZipArchive& archive, const ZipEntry& entry, std::size_t most);

/// An entry to be added.
struct NewEntry {
  std::string name;
  Bytes content;
  bool executable = false;
  bool compressed = true;
};

/// What becomes of an archive. All that is not named stays, byte for byte and in its order.
struct ZipEdit {
  const ZipEntry* replaced = nullptr;
  Bytes stream; // its compressed form, by the method that it had
  std::uint32_t checksum = 0;
  std::uint32_t size = 0;
  std::vector<const ZipEntry*> removed;
  std::vector<NewEntry> added; // with the time of `replaced`, at the end
};

/// The archive after the edit, in pieces: parts of the old one, and new ones of their own.
class ZipResult {
public:
  /// Throws Failure when it would be larger than an archive of this kind can be.
  ZipResult(const ZipArchive& archive, const ZipEdit& edit);
  ZipResult(const ZipResult&) = delete;
  ZipResult& operator=(const ZipResult&) = delete;

  template <class Take> void forEach(Take take) const {
    for (const Piece& piece : pieces_) {
      take(piece.old.empty() ? View(piece.fresh) : piece.old);
    }
  }
  std::size_t size() const { return size_; }
  std::uint32_t checksum() const;

private:
  struct Piece {
    View old;
    Bytes fresh;
  };

  void keep(View old);
  void add(Bytes fresh);
  void addEntry(const NewEntry& entry, const ZipEntry& like, Bytes& central);

  std::vector<Piece> pieces_;
  std::size_t size_ = 0;
};

} // namespace qvwrap
