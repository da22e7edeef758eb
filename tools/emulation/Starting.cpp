// Linked into every program of a build for another machine. An emulated program that starts another one asks the kernel
// for it, which would refuse a file of a foreign machine: here such a file is given to the emulator instead. What
// starts programs of its own inside the C library (popen, system) is not reached.

#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "Starting.h"

namespace {

constexpr std::array<const char*, 4> kEmulator{QV_EMULATOR};

/// The loader's variables are meant for the emulated program. qvconfine, a program of this machine, takes the prefix
/// off.
constexpr std::string_view kForTheLoader = "LD_";
constexpr std::string_view kKeptPrefix = "QV_KEPT_";

bool isOfThisBuild(const char* path) {
  if (::access(path, X_OK) != 0) return false;
  const int file = ::open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  Elf64_Ehdr header{};
  const ssize_t length = ::read(file, &header, sizeof header);
  ::close(file);
  return length == sizeof header && std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 && header.e_machine == EM_AARCH64;
}

/// What the kernel is asked for in place of a program of this build.
class Emulated {
public:
  Emulated(const char* path, char* const arguments[], char* const environment[]) : program_(path) {
    if (program_ == "/proc/self/exe") {
      std::array<char, PATH_MAX> own{};
      if (::readlink(path, own.data(), own.size() - 1) > 0) program_ = own.data();
    }
    for (const char* word : kEmulator)
      words_.push_back(const_cast<char*>(word));
    static char named[] = "-0";
    words_.insert(words_.end(), {named, *arguments != nullptr ? *arguments : program_.data(), program_.data()});
    for (char* const* word = arguments; *word != nullptr && *++word != nullptr;)
      words_.push_back(*word);
    words_.push_back(nullptr);

    for (char* const* entry = environment; entry != nullptr && *entry != nullptr; ++entry) {
      if (std::string_view(*entry).starts_with(kForTheLoader)) kept_.push_back(std::string(kKeptPrefix).append(*entry));
    }
    for (char* const* entry = environment; entry != nullptr && *entry != nullptr; ++entry) {
      if (!std::string_view(*entry).starts_with(kForTheLoader)) entries_.push_back(*entry);
    }
    for (std::string& entry : kept_)
      entries_.push_back(entry.data());
    entries_.push_back(nullptr);
  }

  const char* path() const { return words_.front(); }
  char* const* arguments() const { return words_.data(); }
  char* const* environment() const { return entries_.data(); }

private:
  std::string program_;
  std::vector<std::string> kept_;
  std::vector<char*> words_;
  std::vector<char*> entries_;
};

/// Whether what this process becomes is to be confined, whatever it is.
bool toBeConfined = false;

bool isProgram(const char* path) {
  const int file = ::open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  std::array<char, SELFMAG> begin{};
  const ssize_t length = ::read(file, begin.data(), begin.size());
  ::close(file);
  return length == SELFMAG &&
         (std::memcmp(begin.data(), ELFMAG, SELFMAG) == 0 || std::memcmp(begin.data(), "#!", 2) == 0);
}

/// Becomes a program of this machine, confined. One that there is not, or that is none, is found out here: qvconfine
/// could not tell the caller any more.
int startConfined(const char* path, char* const arguments[], char* const environment[]) {
  if (::access(path, X_OK) != 0) return -1;
  if (!isProgram(path)) {
    errno = ENOEXEC;
    return -1;
  }
  std::vector<char*> words{const_cast<char*>(kEmulator.front()), const_cast<char*>(path)};
  for (char* const* word = arguments; *word != nullptr && *++word != nullptr;)
    words.push_back(*word);
  words.push_back(nullptr);
  return static_cast<int>(::syscall(SYS_execve, words.front(), words.data(), environment));
}

int start(const char* path, char* const arguments[], char* const environment[]) {
  if (!isOfThisBuild(path)) {
    return toBeConfined ? startConfined(path, arguments, environment)
                        : static_cast<int>(::syscall(SYS_execve, path, arguments, environment));
  }
  const Emulated emulated(path, arguments, environment);
  return static_cast<int>(::syscall(SYS_execve, emulated.path(), emulated.arguments(), emulated.environment()));
}

} // namespace

// The C library's own declarations name their parameters in the way that is reserved to it.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" {

void qv_confine_what_this_becomes() { toBeConfined = true; }

int execve(const char* path, char* const arguments[], char* const environment[]) noexcept {
  return start(path, arguments, environment);
}

int execv(const char* path, char* const arguments[]) noexcept { return start(path, arguments, environ); }

int execvp(const char* name, char* const arguments[]) noexcept {
  if (std::strchr(name, '/') != nullptr) return start(name, arguments, environ);
  const char* const folders = ::getenv("PATH");
  std::string_view rest = folders != nullptr ? folders : "/usr/bin:/bin";
  int reason = ENOENT;
  for (bool more = true; more;) {
    const std::size_t end = rest.find(':');
    const std::string folder(rest.substr(0, end));
    more = end != std::string_view::npos;
    if (more) rest.remove_prefix(end + 1);
    start(((folder.empty() ? "." : folder) + "/" + name).c_str(), arguments, environ);
    if (errno == EACCES) reason = EACCES;
    if (errno != EACCES && errno != ENOENT && errno != ENOTDIR) return -1;
  }
  errno = reason;
  return -1;
}

int execl(const char* path, const char* first, ...) noexcept {
  std::vector<char*> arguments{const_cast<char*>(first)};
  va_list rest;
  va_start(rest, first);
  while (arguments.back() != nullptr)
    arguments.push_back(va_arg(rest, char*));
  va_end(rest);
  return start(path, arguments.data(), environ);
}

int posix_spawn(pid_t* child, const char* path, const posix_spawn_file_actions_t* actions,
                const posix_spawnattr_t* attributes, char* const arguments[], char* const environment[]) {
  const auto ours = reinterpret_cast<decltype(&posix_spawn)>(::dlsym(RTLD_NEXT, "posix_spawn"));
  if (!isOfThisBuild(path)) return ours(child, path, actions, attributes, arguments, environment);
  const Emulated emulated(path, arguments, environment);
  return ours(child, emulated.path(), actions, attributes, emulated.arguments(), emulated.environment());
}

} // extern "C"
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
