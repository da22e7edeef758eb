#include "Files.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "Failure.h"

namespace fs = std::filesystem;

namespace qvwrap {

namespace {

class Descriptor {
public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) {
      close(number_);
    }
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

private:
  int number_;
};

void openForReading(const Descriptor& descriptor, const fs::path& file, struct stat& status) {
  if (!descriptor.isOpen()) {
    const std::string sentence =
        errno == ELOOP ? file.string() + " is a symbolic link, not a file" : becauseOf(file, "cannot be read");
    throw Failure(kNoInput, sentence);
  }
  if (fstat(descriptor.number(), &status) != 0) {
    throw Failure(kNoInput, becauseOf(file, "cannot be read"));
  }
  if (!S_ISREG(status.st_mode)) {
    throw Failure(kNoInput, file.string() + " is not a file");
  }
}

int openReading(const fs::path& file) { return open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }

/// What a copy of a file keeps of it beside its content. Attributes that may not be set here are left out, as cp does.
void keepAttributes(int from, int to) {
  Bytes names(static_cast<std::size_t>(std::max<ssize_t>(flistxattr(from, nullptr, 0), 0)));
  const ssize_t size = flistxattr(from, reinterpret_cast<char*>(names.data()), names.size());
  for (ssize_t at = 0; at < size;) {
    const char* name = reinterpret_cast<const char*>(names.data()) + at;
    Bytes value(static_cast<std::size_t>(std::max<ssize_t>(fgetxattr(from, name, nullptr, 0), 0)));
    if (fgetxattr(from, name, value.data(), value.size()) == static_cast<ssize_t>(value.size())) {
      fsetxattr(to, name, value.data(), value.size(), 0);
    }
    at += static_cast<ssize_t>(std::strlen(name)) + 1;
  }
}

/// A file that is removed unless it is kept.
class TemporaryFile {
public:
  explicit TemporaryFile(const fs::path& beside) : path_(beside.parent_path() / ".qvwrap.XXXXXX"), open_(make()) {
    if (!open_.isOpen()) {
      throw Failure(kCannotWrite, becauseOf(beside, "cannot be replaced"));
    }
  }
  ~TemporaryFile() {
    if (!kept_) {
      unlink(path_.c_str());
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int number() const { return open_.number(); }
  bool renameTo(const fs::path& file) {
    kept_ = rename(path_.c_str(), file.c_str()) == 0;
    return kept_;
  }

private:
  int make() { return mkostemp(path_.data(), O_CLOEXEC); }

  std::string path_;
  Descriptor open_;
  bool kept_ = false;
};

} // namespace

std::string becauseOf(const fs::path& file, const char* what) {
  return file.string() + " " + what + ": " + std::strerror(errno);
}

Bytes readFile(const fs::path& file) {
  const Descriptor descriptor(openReading(file));
  struct stat status = {};
  openForReading(descriptor, file, status);
  Bytes content(static_cast<std::size_t>(status.st_size));
  std::size_t done = 0;
  while (done < content.size()) {
    const ssize_t count = read(descriptor.number(), content.data() + done, content.size() - done);
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count <= 0) {
      throw Failure(kNoInput,
                    count < 0 ? becauseOf(file, "cannot be read") : file.string() + " changes while it is read");
    }
    done += static_cast<std::size_t>(count);
  }
  return content;
}

MappedFile::MappedFile(const fs::path& file) {
  const Descriptor descriptor(openReading(file));
  struct stat status = {};
  openForReading(descriptor, file, status);
  if (status.st_size == 0) {
    return;
  }
  const auto size = static_cast<std::size_t>(status.st_size);
  void* const start = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor.number(), 0);
  if (start == MAP_FAILED) {
    throw Failure(kNoInput, becauseOf(file, "cannot be read"));
  }
  content_ = {static_cast<const std::uint8_t*>(start), size};
}

MappedFile::~MappedFile() {
  if (!content_.empty()) {
    munmap(const_cast<std::uint8_t*>(content_.data()), content_.size());
  }
}

void writeAll(int descriptor, View content, const fs::path& file) {
  while (!content.empty()) {
    const ssize_t count = write(descriptor, content.data(), content.size());
    if (count < 0 && errno == EINTR) {
      continue;
    }
    if (count < 0) {
      throw Failure(kCannotWrite, becauseOf(file, "cannot be written"));
    }
    content = content.subspan(static_cast<std::size_t>(count));
  }
}

void replaceFile(const fs::path& file, const std::function<void(int)>& write) {
  const Descriptor old(openReading(file));
  struct stat status = {};
  openForReading(old, file, status);
  TemporaryFile fresh(fs::absolute(file));
  write(fresh.number());
  // Who may not give the file to its owner keeps it; all else is as it was.
  if (fchown(fresh.number(), status.st_uid, status.st_gid) != 0 && errno != EPERM) {
    throw Failure(kCannotWrite, becauseOf(file, "cannot be replaced"));
  }
  keepAttributes(old.number(), fresh.number());
  if (fchmod(fresh.number(), status.st_mode & 07777) != 0 || fsync(fresh.number()) != 0 || !fresh.renameTo(file)) {
    throw Failure(kCannotWrite, becauseOf(file, "cannot be replaced"));
  }
  // From here on the file is the new one, whatever becomes of this.
  const Descriptor folder(open(fs::absolute(file).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  fsync(folder.number());
}

void createFile(const fs::path& file, View content, bool executable) {
  const Descriptor fresh(
      open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, executable ? 0777 : 0666));
  if (!fresh.isOpen()) {
    throw Failure(kCannotWrite, becauseOf(file, "cannot be made"));
  }
  writeAll(fresh.number(), content, file);
  if (fsync(fresh.number()) != 0) {
    throw Failure(kCannotWrite, becauseOf(file, "cannot be written"));
  }
}

void syncFolder(const fs::path& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor.isOpen() || fsync(descriptor.number()) != 0) {
    throw Failure(kCannotWrite, becauseOf(folder, "cannot be written"));
  }
}

TemporaryFolder::TemporaryFolder(const fs::path& parent) {
  std::string pattern = parent / ".qvwrap.XXXXXX";
  if (mkdtemp(pattern.data()) == nullptr) {
    throw Failure(kCannotWrite, becauseOf(parent, "cannot be written"));
  }
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

} // namespace qvwrap
