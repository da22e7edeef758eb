#pragma once

#include <vector>

#include "MachO.h"

namespace qvwrap {

/// Why the library cannot be put into an executable of these parts. Throws Failure. A signature is none when
/// `maySpoilSignature`.
void refuseUnlessWrappable(const std::vector<Slice>& slices, bool maySpoilSignature);

/// The executable with a command in each 64-bit part that loads `library`, and one for the folder it lies in where that
/// is missing. Its size, and everything behind the load commands, stay as they are. Throws Failure when there is no
/// room.
Bytes addLibrary(View file, const std::vector<Slice>& slices, const LibraryCommand& library, bool addedFolder);

struct Restored {
  Bytes file;
  bool original = true; // byte for byte what addLibrary was given
};

/// Takes back what addLibrary did. Throws Failure when a 64-bit part does not load the library by qvwrap's doing.
Restored removeLibrary(View file, const std::vector<Slice>& slices);

} // namespace qvwrap
