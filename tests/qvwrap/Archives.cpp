#include "Archives.h"

#include <zlib.h>

namespace inputs {

namespace {

void add16(Bytes& bytes, std::size_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value));
  bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}

void add32(Bytes& bytes, std::size_t value) {
  add16(bytes, value & 0xffff);
  add16(bytes, value >> 16 & 0xffff);
}

void add(Bytes& bytes, const std::string& text) { bytes.insert(bytes.end(), text.begin(), text.end()); }

} // namespace

Bytes zlibStream(View content, int level) {
  z_stream zlib = {};
  deflateInit2(&zlib, level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
  Bytes stream(deflateBound(&zlib, content.size()));
  zlib.next_in = const_cast<Bytef*>(content.data());
  zlib.avail_in = static_cast<uInt>(content.size());
  zlib.next_out = stream.data();
  zlib.avail_out = static_cast<uInt>(stream.size());
  deflate(&zlib, Z_FINISH);
  stream.resize(zlib.total_out);
  deflateEnd(&zlib);
  return stream;
}

Bytes archiveOf(const std::vector<Packed>& entries, const std::string& comment) {
  Bytes file;
  Bytes central;
  for (const Packed& entry : entries) {
    const std::size_t method = entry.method >= 0                          ? static_cast<std::size_t>(entry.method)
                               : entry.deflated && !entry.content.empty() ? 8
                                                                          : 0;
    const Bytes stream = !entry.stream.empty() ? entry.stream
                         : method == 8         ? zlibStream(entry.content, 6)
                                               : entry.content;
    const std::size_t size = entry.size >= 0 ? static_cast<std::size_t>(entry.size) : entry.content.size();
    const std::size_t sum = entry.checksum >= 0 ? static_cast<std::size_t>(entry.checksum)
                                                : crc32_z(0, entry.content.data(), entry.content.size());
    const std::size_t flags = static_cast<std::size_t>(entry.flags) | (entry.descriptor ? 8 : 0);
    const std::string localName = entry.localName.empty() ? entry.name : entry.localName;

    add32(central, 0x02014b50);
    add16(central, 3 << 8 | 30);
    const std::size_t local = file.size();
    add32(file, 0x04034b50);
    for (Bytes* header : {&file, &central}) {
      const bool told = header == &central || !entry.descriptor;
      add16(*header, 20);
      add16(*header, flags);
      add16(*header, method);
      add32(*header, 0x5a21'6000);
      add32(*header, told ? sum : 0);
      add32(*header, told ? stream.size() : 0);
      add32(*header, told ? size : 0);
    }
    add16(file, localName.size());
    add16(file, 0);
    add(file, localName);
    file.insert(file.end(), stream.begin(), stream.end());
    if (entry.descriptor) {
      add32(file, 0x08074b50);
      add32(file, sum);
      add32(file, stream.size());
      add32(file, size);
    }
    add16(central, entry.name.size());
    add16(central, 0);
    add16(central, 0);
    add16(central, 0);
    add16(central, 0);
    add32(central, std::size_t{entry.mode} << 16);
    add32(central, entry.local >= 0 ? static_cast<std::size_t>(entry.local) : local);
    add(central, entry.name);
  }
  const std::size_t directory = file.size();
  file.insert(file.end(), central.begin(), central.end());
  add32(file, 0x06054b50);
  add32(file, 0);
  add16(file, entries.size());
  add16(file, entries.size());
  add32(file, central.size());
  add32(file, directory);
  add16(file, comment.size());
  add(file, comment);
  return file;
}

std::vector<Packed> packedApp(View executable) {
  const std::string info = infoPlist("Notes");
  const std::string strings = "\"title\" = \"Notes\";\n";
  return {{.name = "Payload/", .content = {}, .mode = 040755},
          {.name = "Payload/Notes.app/", .content = {}, .mode = 040755},
          {.name = "Payload/Notes.app/Info.plist", .content = {info.begin(), info.end()}},
          {.name = "Payload/Notes.app/Notes", .content = {executable.begin(), executable.end()}, .mode = 0100755},
          {.name = "Payload/Notes.app/en.lproj/Main.strings", .content = {strings.begin(), strings.end()}}};
}

} // namespace inputs
