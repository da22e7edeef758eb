#pragma once

#include <string>

namespace qvdevice {

/// Whether somebody follows the trace, and so what the library in this process does is looked at. Before any
/// constructor too.
bool isObserved();

/// Whether the address lies in the code of the library under test.
bool isInLibrary(const void* address);

/// Whether the library exports a function of that name.
bool isExportedByLibrary(const std::string& function);

/// The file name of the image that holds the address; empty when there is none.
std::string imageAt(const void* address);

} // namespace qvdevice
