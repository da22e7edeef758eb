#include "Child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

namespace {

struct Pipe {
  std::array<int, 2> ends{};
  Pipe() {
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) std::abort();
  }
};

/// Adds `name`=`value`; to a sanitizer's options that are there already, it is added.
void add(std::vector<std::string>& variables, const std::string& name, const std::string& value) {
  for (std::string& variable : variables) {
    if (variable.starts_with(name + "=")) {
      variable += ":" + value;
      return;
    }
  }
  variables.push_back(name + "=" + value);
}

[[noreturn]] void become(const std::vector<std::string>& command, const Environment& environment, int out, int err,
                         const std::function<void()>& prepare) {
  std::vector<std::string> variables = sanitizerOptions();
  for (const auto& [name, value] : environment)
    add(variables, name, value);
  std::vector<char*> arguments;
  std::vector<char*> entries;
  for (const std::string& word : command)
    arguments.push_back(const_cast<char*>(word.c_str()));
  for (const std::string& variable : variables)
    entries.push_back(const_cast<char*>(variable.c_str()));
  arguments.push_back(nullptr);
  entries.push_back(nullptr);
  ::dup2(out, STDOUT_FILENO);
  ::dup2(err, STDERR_FILENO);
  if (prepare) prepare();
  ::execve(arguments[0], arguments.data(), entries.data());
  ::_exit(127);
}

void readBoth(int out, int err, ChildResult& result) {
  std::array<pollfd, 2> waiting{pollfd{out, POLLIN, 0}, pollfd{err, POLLIN, 0}};
  while (waiting[0].fd >= 0 || waiting[1].fd >= 0) {
    ::poll(waiting.data(), waiting.size(), -1);
    for (std::size_t i = 0; i < waiting.size(); ++i) {
      if (waiting[i].fd < 0 || waiting[i].revents == 0) continue;
      std::array<char, 4096> buffer{};
      const ssize_t length = ::read(waiting[i].fd, buffer.data(), buffer.size());
      if (length > 0) {
        (i == 0 ? result.output : result.errors).append(buffer.data(), static_cast<std::size_t>(length));
      } else {
        waiting[i].fd = -1;
      }
    }
  }
}

} // namespace

std::vector<std::string> sanitizerOptions() {
  std::vector<std::string> variables;
  for (const char* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "TSAN_OPTIONS", "UBSAN_OPTIONS"}) {
    if (const char* value = std::getenv(name)) variables.push_back(std::string(name) + "=" + value);
  }
  return variables;
}

ChildResult runChild(const std::vector<std::string>& command, const Environment& environment,
                     const std::function<void()>& prepare) {
  const Pipe out;
  const Pipe err;
  const pid_t child = ::fork();
  if (child < 0) std::abort();
  if (child == 0) become(command, environment, out.ends[1], err.ends[1], prepare);
  ::close(out.ends[1]);
  ::close(err.ends[1]);
  ChildResult result;
  readBoth(out.ends[0], err.ends[0], result);
  ::close(out.ends[0]);
  ::close(err.ends[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

std::string freshFolder() {
  std::string pattern = std::string(std::getenv("QVDEVICE_CONTAINER")) + "/tmp/folder.XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) std::abort();
  return pattern;
}
