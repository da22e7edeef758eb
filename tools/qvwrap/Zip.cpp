#include "Zip.h"

#include <algorithm>
#include <set>

#include "Deflate.h"
#include "Failure.h"
#include "ZipFormat.h"

namespace qvwrap {

using namespace zip;

namespace {

[[noreturn]] void malformed(const std::string& how) { throw Failure(kRefused, "the archive is malformed: " + how); }

std::size_t findEnd(View file) {
  if (file.size() < 4 || (little32(file, 0) != kLocal && little32(file, 0) != kEnd)) {
    throw Failure(kRefused, "it is no app: neither a folder nor a zip archive");
  }
  if (file.size() >= kEndSize) {
    const std::size_t last = file.size() - kEndSize;
    const std::size_t first = last > 0xffff ? last - 0xffff : 0;
    for (std::size_t at = last + 1; at-- > first;) {
      if (little32(file, at) == kEnd && little16(file, at + 20) == last - at) {
        return at;
      }
    }
  }
  throw Failure(kRefused, "the archive is truncated: it has no end record");
}

/// Names that would lead out of the folder that the archive is unpacked in, or mean different things to different
/// readers.
void refuseTrick(const std::string& name) {
  bool bad = name.empty() || name.front() == '/' || name.find('\\') != std::string::npos ||
             name.find('\0') != std::string::npos;
  for (std::size_t at = 0; at <= name.size() && !bad;) {
    const std::size_t end = std::min(name.find('/', at), name.size());
    const std::string_view part = std::string_view(name).substr(at, end - at);
    bad = part == ".." || part == "." || (part.empty() && end != name.size());
    at = end + 1;
  }
  if (bad) {
    throw Failure(kRefused, "the archive holds an entry whose name leads out of it or is none: \"" + name + "\"");
  }
}

void readLocal(View file, std::size_t central, ZipEntry& entry) {
  const std::string where = "\"" + entry.name + "\"";
  if (entry.local > central || central - entry.local < kLocalSize || little32(file, entry.local) != kLocal) {
    malformed(where + " is not where the directory says");
  }
  const std::size_t nameSize = little16(file, entry.local + 26);
  const std::size_t extraSize = little16(file, entry.local + 28);
  entry.data = entry.local + kLocalSize + nameSize + extraSize;
  if (entry.data > central || entry.compressedSize > central - entry.data) {
    malformed(where + " reaches into the directory");
  }
  if (textOf(file.subspan(entry.local + kLocalSize, nameSize)) != entry.name) {
    malformed(where + " has another name in the directory than at its place");
  }
  if (little16(file, entry.local + 8) != entry.method || little16(file, entry.local + 6) != entry.flags) {
    malformed(where + " is another kind of entry in the directory than at its place");
  }
}

ZipEntry readCentral(View file, std::size_t at, std::size_t end) {
  if (end - at < kCentralSize || little32(file, at) != kCentral) {
    malformed("its directory ends before its last entry");
  }
  const std::size_t nameSize = little16(file, at + 28);
  ZipEntry entry;
  entry.central = at;
  entry.centralSize = kCentralSize + nameSize + little16(file, at + 30) + little16(file, at + 32);
  if (entry.centralSize > end - at) {
    malformed("its directory ends before its last entry");
  }
  entry.name = textOf(file.subspan(at + kCentralSize, nameSize));
  entry.fromUnix = file[at + 5] == kUnix || file[at + 5] == kDarwin;
  entry.flags = little16(file, at + 8);
  entry.method = little16(file, at + 10);
  entry.time = little32(file, at + 12);
  entry.checksum = little32(file, at + 16);
  entry.compressedSize = little32(file, at + 20);
  entry.size = little32(file, at + 24);
  entry.attributes = little32(file, at + 38);
  entry.local = little32(file, at + 42);
  if (entry.compressedSize == 0xffffffff || entry.size == 0xffffffff || entry.local == 0xffffffff) {
    throw Failure(kRefused, "the archive holds an entry of 4 GiB or more (zip64), which qvwrap does not handle");
  }
  refuseTrick(entry.name);
  return entry;
}

void refuseOverlap(const ZipArchive& archive) {
  std::vector<const ZipEntry*> order;
  for (const ZipEntry& entry : archive.entries) {
    order.push_back(&entry);
  }
  std::ranges::sort(order, {}, &ZipEntry::local);
  for (std::size_t i = 1; i < order.size(); ++i) {
    if (order[i]->local < order[i - 1]->dataEnd()) {
      malformed("\"" + order[i - 1]->name + "\" and \"" + order[i]->name + "\" overlap");
    }
  }
}

void refuseTwice(const ZipArchive& archive) {
  std::set<std::string> names;
  for (const ZipEntry& entry : archive.entries) {
    // A folder's name with and without its slash would become one in the file system.
    if (!names.insert(entry.name.substr(0, entry.name.size() - (entry.isFolder() ? 1 : 0))).second) {
      throw Failure(kRefused, "the archive holds \"" + entry.name + "\" twice");
    }
  }
}

} // namespace

const ZipEntry* ZipArchive::find(std::string_view name) const {
  const auto found = std::ranges::find(entries, name, &ZipEntry::name);
  return found == entries.end() ? nullptr : &*found;
}

ZipArchive readZip(View file) {
  ZipArchive archive;
  archive.file = file;
  archive.end = findEnd(file);
  const std::size_t count = little16(file, archive.end + 10);
  const std::size_t size = little32(file, archive.end + 12);
  archive.central = little32(file, archive.end + 16);
  if (count == 0xffff || size == 0xffffffff || archive.central == 0xffffffff) {
    throw Failure(kRefused, "the archive is larger than 4 GiB or 65534 entries (zip64), which qvwrap does not handle");
  }
  if (little16(file, archive.end + 4) != 0 || little16(file, archive.end + 6) != 0 ||
      little16(file, archive.end + 8) != count) {
    throw Failure(kRefused, "the archive is one of several parts");
  }
  if (archive.central > archive.end || size != archive.end - archive.central) {
    malformed("its directory does not lie where its end record says");
  }
  std::size_t at = archive.central;
  for (std::size_t i = 0; i < count; ++i) {
    archive.entries.push_back(readCentral(file, at, archive.end));
    readLocal(file, archive.central, archive.entries.back());
    at += archive.entries.back().centralSize;
  }
  if (at != archive.end) {
    malformed("its directory holds more than its end record says");
  }
  refuseTwice(archive);
  refuseOverlap(archive);
  return archive;
}

Bytes contentOf(const ZipArchive& archive, const ZipEntry& entry, std::size_t most) {
  const std::string where = "\"" + entry.name + "\" in the archive ";
  if ((entry.flags & (kEncrypted | kStrongEncryption | kMaskedHeaders)) != 0) {
    throw Failure(kRefused, where + "is encrypted with a password");
  }
  if (entry.method != kStored && entry.method != kDeflated) {
    throw Failure(kRefused, where + "is compressed by method " + std::to_string(entry.method) +
                                "; only stored and deflated entries can be read");
  }
  if (entry.size > most) {
    throw Failure(kRefused, where + "is larger than " + std::to_string(most >> 20) + " MiB");
  }
  const View stream = archive.file.subspan(entry.data, entry.compressedSize);
  std::optional<Bytes> content;
  if (entry.method == kDeflated) {
    content = inflated(stream, entry.size);
  } else if (entry.size == entry.compressedSize) {
    content = Bytes(stream.begin(), stream.end());
  }
  if (!content || checksum(*content) != entry.checksum) {
    throw Failure(kRefused, where + "is damaged: it does not unpack to what the directory says");
  }
  return *std::move(content);
}

} // namespace qvwrap
