#pragma once

#include <string>
#include <vector>

#include "Inputs.h"

namespace inputs {

/// An entry of an archive, as good or bad as a test wants it. What is not said is as it should be.
struct Packed {
  std::string name;
  Bytes content = {};
  bool deflated = true;
  bool descriptor = false; // its sizes follow its data
  std::uint32_t mode = 0100644;
  int flags = 0;
  int method = -1;
  long size = -1;             // what directory and header claim
  long checksum = -1;         // the same
  Bytes stream = {};          // its data, if not zlib's of the content
  std::string localName = {}; // the name in its own header
  long local = -1;            // where the directory says it is
};

/// An archive with these entries in this order.
Bytes archiveOf(const std::vector<Packed>& entries, const std::string& comment = "");

/// What zlib makes of a content, as a raw stream.
Bytes zlibStream(View content, int level);

/// An app in an archive, its Info.plist, executable and a resource.
std::vector<Packed> packedApp(View executable);

} // namespace inputs
