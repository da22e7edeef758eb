// What a framework and an xcframework are made of.
#pragma once

#include <string>

#include "Findings.h"
#include "Promises.h"

namespace qvcheck {

class Binary;

/// A Mach-O file, slice by slice. Tells its size, symbols and fix-ups on standard output.
void checkBinary(const Binary& binary, const Promises& promises, Findings& findings);

/// A framework, and its debug symbols when `symbols`, a .dSYM folder, is not empty.
void checkFramework(const std::string& folder, const std::string& symbols, const Promises& promises,
                    Findings& findings);

/// An xcframework with a framework for each of the design's platforms, and their debug symbols.
void checkXCFramework(const std::string& folder, const Promises& promises, Findings& findings);

} // namespace qvcheck
