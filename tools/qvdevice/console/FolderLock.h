#pragma once

#include <filesystem>
#include <string>

namespace qvdevice {

/// A folder that one console at a time may work in. The lock is the kernel's: it goes with the process, however that
/// ends, and leaves nothing behind.
class FolderLock {
public:
  /// Throws Failure when another one has it; `what` says what the folder is.
  FolderLock(const std::filesystem::path& folder, const std::string& what);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

private:
  int descriptor_;
};

} // namespace qvdevice
