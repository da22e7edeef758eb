#include "Foundation/FolderWalk.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <utility>

namespace qvdevice {

namespace {

constexpr int kFolder = O_RDONLY | O_DIRECTORY | O_CLOEXEC;

/// The folder that the walk is in.
class Descriptor {
public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { ::close(number_); }
  void become(int number) {
    ::close(number_);
    number_ = number;
  }
  int number() const { return number_; }

private:
  int number_;
};

bool isFolder(int parent, const dirent& entry) {
  if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
  struct stat status{};
  return ::fstatat(parent, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

struct Level {
  std::string name;
  dev_t device = 0;
  ino_t number = 0;
  std::vector<FolderEntry> entries;
  std::size_t next = 0;
  std::size_t pathLength = 0;
};

class Walk {
public:
  Walk(int root, FolderVisitor& visitor) : here_(root), visitor_(visitor) {}

  int run() {
    Level root;
    int error = enter(here_.number(), root);
    if (error) return error;
    levels_.push_back(std::move(root));
    while (!error) {
      Level& level = levels_.back();
      if (level.next < level.entries.size()) {
        error = visit(level.entries[level.next++]);
      } else if (levels_.size() > 1) {
        error = leave();
      } else {
        break;
      }
    }
    return error;
  }

private:
  int enter(int descriptor, Level& level) {
    struct stat status{};
    if (::fstat(descriptor, &status) != 0) return errno;
    level.device = status.st_dev;
    level.number = status.st_ino;
    level.pathLength = path_.size();
    return listFolder(descriptor, level.entries);
  }

  int visit(FolderEntry& entry) {
    const std::size_t before = path_.size();
    if (before != 0) path_ += '/';
    path_ += entry.name;
    int error = visitor_.found(here_.number(), entry, path_);
    if (error || !entry.isFolder) {
      path_.resize(before);
      return error;
    }
    Level inner;
    const int descriptor = ::openat(here_.number(), entry.name.c_str(), kFolder | O_NOFOLLOW);
    error = descriptor < 0 ? errno : enter(descriptor, inner);
    if (error) {
      if (descriptor >= 0) ::close(descriptor);
      error = visitor_.unreadable(here_.number(), entry.name, path_, error);
      path_.resize(before);
      return error;
    }
    here_.become(descriptor);
    inner.name = std::move(entry.name);
    levels_.push_back(std::move(inner));
    return 0;
  }

  int leave() {
    // The folder may have been moved meanwhile: what lies above it is then not where we came from.
    const int up = ::openat(here_.number(), "..", kFolder);
    if (up < 0) return errno;
    const Level done = std::move(levels_.back());
    levels_.pop_back();
    struct stat status{};
    const Level& above = levels_.back();
    if (::fstat(up, &status) != 0 || status.st_dev != above.device || status.st_ino != above.number) {
      ::close(up);
      return ESTALE;
    }
    here_.become(up);
    const int error = visitor_.left(up, done.name, path_);
    path_.resize(above.pathLength);
    return error;
  }

  Descriptor here_;
  FolderVisitor& visitor_;
  std::vector<Level> levels_;
  std::string path_;
};

} // namespace

int listFolder(int descriptor, std::vector<FolderEntry>& entries) {
  const int own = ::fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  if (own < 0) return errno;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(::fdopendir(own), &::closedir);
  if (!folder) {
    const int error = errno;
    ::close(own);
    return error;
  }
  errno = 0;
  while (const dirent* entry = ::readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") entries.push_back({std::string(name), isFolder(descriptor, *entry)});
    errno = 0;
  }
  return errno;
}

int walkFolder(const char* root, RootLink link, FolderVisitor& visitor) {
  const int descriptor = ::open(root, kFolder | (link == RootLink::refused ? O_NOFOLLOW : 0));
  if (descriptor < 0) return errno;
  return Walk(descriptor, visitor).run();
}

} // namespace qvdevice
