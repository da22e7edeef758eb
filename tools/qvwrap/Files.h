#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "Bytes.h"

namespace qvwrap {

/// The whole of a regular file. Throws Failure; a link is not followed.
Bytes readFile(const std::filesystem::path& file);

/// A regular file, mapped into memory for reading; what it holds must not change meanwhile.
class MappedFile {
public:
  /// Throws Failure.
  explicit MappedFile(const std::filesystem::path& file);
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  View content() const { return content_; }

private:
  View content_;
};

/// Writes to an open file. Throws Failure.
void writeAll(int descriptor, View content, const std::filesystem::path& file);

/// Puts another content into the place of `file`, whole or not at all: what `write` writes goes into a file beside it,
/// reaches the disk and is then renamed. Mode, owner and extended attributes are those of `file`. Throws Failure, and
/// what `write` throws, with `file` untouched.
void replaceFile(const std::filesystem::path& file, const std::function<void(int descriptor)>& write);

/// Makes a file that must not be there, with `content` on the disk. Throws Failure.
void createFile(const std::filesystem::path& file, View content, bool executable);

/// What a folder lists reaches the disk. Throws Failure.
void syncFolder(const std::filesystem::path& folder);

/// A new folder with a name of its own in `parent`, removed again with all that it holds unless it has been moved away.
class TemporaryFolder {
public:
  /// Throws Failure.
  explicit TemporaryFolder(const std::filesystem::path& parent);
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }

private:
  std::filesystem::path path_;
};

/// The sentence for a system call that has just failed.
std::string becauseOf(const std::filesystem::path& file, const char* what);

} // namespace qvwrap
