#include <algorithm>

#include <zlib.h>

#include "Deflate.h"
#include "Failure.h"
#include "Zip.h"
#include "ZipFormat.h"

namespace qvwrap {

using namespace zip;

namespace {

/// The size of the descriptor behind an entry's data: 0 without one, 16 with the mark that most programs write,
/// else 12.
std::size_t descriptorSize(const ZipArchive& archive, const ZipEntry& entry) {
  if ((entry.flags & kHasDescriptor) == 0) {
    return 0;
  }
  const View rest = archive.file.subspan(entry.dataEnd(), archive.central - entry.dataEnd());
  const auto describes = [&](std::size_t at) {
    return rest.size() >= at + 12 && little32(rest, at) == entry.checksum &&
           little32(rest, at + 4) == entry.compressedSize && little32(rest, at + 8) == entry.size;
  };
  if (rest.size() >= 4 && little32(rest, 0) == kDescriptor && describes(4)) {
    return 16;
  }
  if (describes(0)) {
    return 12;
  }
  throw Failure(kRefused, "the archive is malformed: what follows \"" + entry.name + "\" does not describe it");
}

std::size_t endOf(const ZipArchive& archive, const ZipEntry& entry) {
  return entry.dataEnd() + descriptorSize(archive, entry);
}

/// Check sum, compressed size and size: three words that stand side by side in headers and descriptors.
void putSizes(std::span<std::uint8_t> bytes, std::size_t at, const ZipEdit& edit) {
  putLittle<4>(bytes, at, edit.checksum);
  putLittle<4>(bytes, at + 4, edit.stream.size());
  putLittle<4>(bytes, at + 8, edit.size);
}

/// The same in an entry's own header, where a word may be left zero for a descriptor to tell, and is then left so.
void putLocalSizes(std::span<std::uint8_t> header, const ZipEdit& edit, bool described) {
  const ZipEntry& entry = *edit.replaced;
  const std::uint32_t old[] = {entry.checksum, entry.compressedSize, entry.size};
  const std::uint64_t fresh[] = {edit.checksum, edit.stream.size(), edit.size};
  for (std::size_t i = 0; i < 3; ++i) {
    const std::size_t at = 14 + 4 * i;
    if (little32(header, at) == 0 && described) {
      continue;
    }
    if (little32(header, at) != old[i]) {
      throw Failure(kRefused, "the archive is malformed: \"" + entry.name +
                                  "\" has another size or check sum in the directory than at its place");
    }
    putLittle<4>(header, at, fresh[i]);
  }
}

/// The local header, data and descriptor of the entry that is replaced.
Bytes replacement(const ZipArchive& archive, const ZipEdit& edit) {
  const ZipEntry& entry = *edit.replaced;
  const View header = archive.file.subspan(entry.local, entry.data - entry.local);
  Bytes bytes(header.begin(), header.end());
  const std::size_t descriptor = descriptorSize(archive, entry);
  putLocalSizes(bytes, edit, descriptor != 0);
  append(bytes, View(edit.stream));
  if (descriptor != 0) {
    append(bytes, archive.file.subspan(entry.dataEnd(), descriptor));
    putSizes(bytes, bytes.size() - 12, edit);
  }
  return bytes;
}

/// Where each of the old entries goes to.
class Moves {
public:
  void add(std::size_t from, std::size_t to) { moves_.push_back({from, to}); }
  std::size_t operator()(std::size_t local) const {
    const auto after = std::ranges::upper_bound(moves_, local, {}, &Move::from);
    return after == moves_.begin() ? local : local - (after - 1)->from + (after - 1)->to;
  }

private:
  struct Move {
    std::size_t from;
    std::size_t to;
  };
  std::vector<Move> moves_;
};

} // namespace

ZipResult::ZipResult(const ZipArchive& archive, const ZipEdit& edit) {
  std::vector<const ZipEntry*> touched = edit.removed;
  touched.push_back(edit.replaced);
  std::ranges::sort(touched, {}, &ZipEntry::local);
  const auto isRemoved = [&](const ZipEntry& entry) {
    return std::ranges::find(edit.removed, &entry) != edit.removed.end();
  };

  Moves moves;
  std::size_t at = 0;
  for (const ZipEntry* entry : touched) {
    const std::size_t end = endOf(archive, *entry);
    if (at > entry->local) {
      throw Failure(kRefused, "the archive is malformed: what describes an entry lies over \"" + entry->name + "\"");
    }
    keep(archive.file.subspan(at, entry->local - at));
    if (entry == edit.replaced) {
      add(replacement(archive, edit));
    }
    at = end;
    moves.add(at, size_);
  }
  keep(archive.file.subspan(at, archive.central - at));

  Bytes central;
  for (const ZipEntry& entry : archive.entries) {
    if (isRemoved(entry)) {
      continue;
    }
    const std::size_t begin = central.size();
    append(central, archive.file.subspan(entry.central, entry.centralSize));
    putLittle<4>(central, begin + 42, moves(entry.local));
    if (&entry == edit.replaced) {
      putSizes(central, begin + 16, edit);
    }
  }
  for (const NewEntry& entry : edit.added) {
    addEntry(entry, *edit.replaced, central);
  }

  const std::size_t count = archive.entries.size() - edit.removed.size() + edit.added.size();
  const View oldEnd = archive.file.subspan(archive.end);
  Bytes end(oldEnd.begin(), oldEnd.end());
  putLittle<2>(end, 8, count);
  putLittle<2>(end, 10, count);
  putLittle<4>(end, 12, central.size());
  putLittle<4>(end, 16, size_);
  add(std::move(central));
  add(std::move(end));
  if (size_ >= 0xffffffff || count >= 0xffff) {
    throw Failure(kRefused, "the archive would become larger than 4 GiB or 65534 entries, which takes another format");
  }
}

std::uint32_t ZipResult::checksum() const {
  uLong sum = crc32_z(0, nullptr, 0);
  forEach([&](View piece) { sum = crc32_z(sum, piece.data(), piece.size()); });
  return static_cast<std::uint32_t>(sum);
}

void ZipResult::keep(View old) {
  if (!old.empty()) {
    size_ += old.size();
    pieces_.push_back({old, {}});
  }
}

void ZipResult::add(Bytes fresh) {
  size_ += fresh.size();
  pieces_.push_back({{}, std::move(fresh)});
}

void ZipResult::addEntry(const NewEntry& entry, const ZipEntry& like, Bytes& central) {
  const bool isFolder = entry.name.ends_with('/');
  const bool compressed = entry.compressed && !isFolder;
  const Bytes stream = compressed ? deflated(entry.content) : entry.content;
  // From "version needed" on, header and directory say the same in the same order.
  Bytes common;
  appendLittle<2>(common, 20);
  appendLittle<2>(common, like.flags & kUtf8);
  appendLittle<2>(common, compressed ? kDeflated : kStored);
  appendLittle<4>(common, like.time);
  appendLittle<4>(common, qvwrap::checksum(entry.content));
  appendLittle<4>(common, stream.size());
  appendLittle<4>(common, entry.content.size());
  appendLittle<2>(common, entry.name.size());
  appendLittle<2>(common, 0); // extra fields

  appendLittle<4>(central, kCentral);
  appendLittle<2>(central, kUnix << 8 | 30);
  append(central, common);
  appendLittle<2>(central, 0); // comment
  appendLittle<2>(central, 0); // disk
  appendLittle<2>(central, 0); // internal attributes
  const std::uint32_t mode = isFolder ? 040755 : entry.executable ? 0100755 : 0100644;
  appendLittle<4>(central, mode << 16 | (isFolder ? 0x10 : 0));
  appendLittle<4>(central, size_);
  append(central, entry.name);

  Bytes local;
  appendLittle<4>(local, kLocal);
  append(local, common);
  append(local, entry.name);
  append(local, stream);
  add(std::move(local));
}

} // namespace qvwrap
