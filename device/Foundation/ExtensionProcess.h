#pragma once

#include <string>
#include <sys/types.h>

namespace qvdevice {

/// An extension in a process of its own, started by the system on this process's behalf (QVDEVICE_EXTENSIONS). It ends,
/// at the latest, with the connection to the system.
struct ExtensionProcess {
  pid_t pid = 0;
  /// What is said to the extension and what it says, a stream.
  int channel = -1;
  /// Where the system says how the process has ended; closing it ends the process.
  int connection = -1;
};

/// Starts the extension with that bundle identifier. False, with the reason in `error` and nothing left open, when that
/// cannot be.
bool startExtension(const std::string& identifier, ExtensionProcess& process, std::string& error);

/// What the system has to say of the process's end: "by signal 9 (Killed)"; empty when it says nothing.
std::string howExtensionEnded(int connection);

} // namespace qvdevice
