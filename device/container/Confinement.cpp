#include "container/Confinement.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdint>
#include <cstring>

#include "container/Refusal.h"

// Rights newer than the C library's headers; their values belong to the kernel's interface and never change.
#ifndef LANDLOCK_ACCESS_FS_TRUNCATE
#define LANDLOCK_ACCESS_FS_TRUNCATE (1ULL << 14)
#endif

namespace qvdevice {

namespace {

constexpr std::uint64_t kWriteFile = LANDLOCK_ACCESS_FS_WRITE_FILE;

/// Every right to change the file tree or a file's contents. Attributes (mode, owner, dates, extended ones) are not
/// among the rights that the kernel can take away.
constexpr std::uint64_t kWriteTree = kWriteFile | LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                                     LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                     LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK |
                                     LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK |
                                     LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_REFER;

// The first kernel interface that lets a confined process move files from one of its folders to another, which
// every app does, and the first that confines truncation by path.
constexpr long kFirstUsableVersion = 2;
constexpr long kTruncateVersion = 3;

std::string because(int error) { return std::string(": ") + std::strerror(error); }

class Ruleset {
public:
  explicit Ruleset(std::uint64_t handled) : handled_(handled) {
    landlock_ruleset_attr attributes{};
    attributes.handled_access_fs = handled;
    descriptor_ = static_cast<int>(::syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes, 0));
    if (descriptor_ < 0) refuse("this process cannot be confined to its container" + because(errno));
  }
  Ruleset(const Ruleset&) = delete;
  Ruleset& operator=(const Ruleset&) = delete;
  ~Ruleset() { ::close(descriptor_); }

  /// False when there is no such path.
  bool allow(const char* path, std::uint64_t rights) const {
    const int target = ::open(path, O_PATH | O_CLOEXEC);
    if (target < 0) return false;
    landlock_path_beneath_attr rule{};
    rule.allowed_access = rights & handled_;
    rule.parent_fd = target;
    const long added = ::syscall(SYS_landlock_add_rule, descriptor_, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    const int error = errno;
    ::close(target);
    if (added != 0) refuse(std::string("writing beneath \"") + path + "\" cannot be allowed" + because(error));
    return true;
  }

  void enforce() const {
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || ::syscall(SYS_landlock_restrict_self, descriptor_, 0) != 0) {
      refuse("this process cannot be confined to its container" + because(errno));
    }
  }

private:
  std::uint64_t handled_;
  int descriptor_ = -1;
};

constexpr char kStandardError[] = "/proc/self/fd/2";

/// Whether standard error is a terminal or a pipe with a name: what has been taken from its place may be put back there
/// by its path, as on the phone, and no file of anybody's is any the worse for it.
bool standardErrorKeepsNothing() {
  char path[PATH_MAX];
  struct stat status{};
  if (::readlink(kStandardError, path, sizeof path) <= 0 || path[0] != '/') return false;
  return ::fstat(STDERR_FILENO, &status) == 0 && (S_ISFIFO(status.st_mode) || ::isatty(STDERR_FILENO) != 0);
}

} // namespace

void confineWritesTo(const std::string& container, const std::string& device) {
  const long version = ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  if (version < 0)
    refuse("this kernel cannot confine a process to its container: Landlock is not available" + because(errno));
  if (version < kFirstUsableVersion) {
    refuse("this kernel cannot confine a process to its container: its Landlock is too old (Linux 5.19 is needed)");
  }
  std::uint64_t truncate = version >= kTruncateVersion ? LANDLOCK_ACCESS_FS_TRUNCATE : 0;
  const Ruleset rules(kWriteTree | truncate);
  if (!rules.allow(container.c_str(), kWriteTree | truncate)) {
    refuse("the container \"" + container + "\" cannot be opened" + because(errno));
  }
  if (!device.empty() && !rules.allow(device.c_str(), kWriteTree | truncate)) {
    refuse("the device's folder \"" + device + "\" cannot be opened" + because(errno));
  }
  for (const char* sink : {"/dev/null", "/dev/tty"})
    rules.allow(sink, kWriteFile | truncate);
  if (standardErrorKeepsNothing()) rules.allow(kStandardError, kWriteFile);
  rules.enforce();
}

} // namespace qvdevice
