// What must hold of each slice. Each check says all that is wrong and goes on.
#pragma once

#include <string>
#include <vector>

#include "Findings.h"
#include "Promises.h"
#include "Slice.h"

namespace qvcheck {

/// Kind of file, platform, oldest release, install name and version, libraries, nothing encrypted, no load command that
/// is not known to be harmless.
void checkLoadCommands(const Slice& slice, Findings& findings);

/// No segment that can be written and executed, code that cannot be written.
void checkSegments(const Slice& slice, Findings& findings);

/// The exported symbols are those of the list.
void checkExports(const Slice& slice, const Promises& promises, Findings& findings);

/// Imports and fix-ups, counted.
struct Fixups {
  std::size_t imports = 0; ///< different symbols
  std::size_t rebases = 0;
  std::size_t binds = 0; ///< at load
  std::size_t lazyBinds = 0;
};

/// Each import is on the list of the library that it is bound to.
Fixups checkImports(const Slice& slice, const Promises& promises, Findings& findings);

/// Addresses of the initialisers, in the order in which they run.
std::vector<uint64_t> initialisers(const Slice& slice, Findings& findings);

/// The initialisers are those of the design, and nothing else runs at load or at exit.
void checkInitialisers(const Slice& slice, Findings& findings);

/// An ad-hoc signature that covers the slice and agrees with it.
void checkSignature(const Slice& slice, Findings& findings);

/// The texts of the system are there; those of debug builds, debug information and the builder's paths are not.
void checkTexts(const Slice& slice, const Promises& promises, Findings& findings);

/// The debug symbols are this slice's, and by them the initialisers have the names of the design.
void checkDebugSymbols(const Slice& slice, const Slice& symbols, Findings& findings);

} // namespace qvcheck
