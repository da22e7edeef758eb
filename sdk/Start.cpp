// The policies file is read as soon as the SDK is loaded: one that is refused stops the app before any of its code
// runs.

#include "Policies.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <forward_list>
#include <fstream>
#include <mutex>
#include <sstream>

#include <unistd.h>

namespace zorbel {

namespace {

constexpr int kRefusedStatus = 65; // EX_DATAERR of sysexits.h

[[noreturn]] void refuse(const std::string& sentence) {
  const std::string line = "Zorbel: " + sentence + "\n";
  [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, line.data(), line.size());
  ::_exit(kRefusedStatus);
}

std::string textOf(const std::string& path) {
  std::ostringstream text;
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file || !(text << file.rdbuf())) {
    refuse(path + ": the policies file cannot be read" + (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
  }
  return text.str();
}

Policies readPolicies() {
  const char* path = std::getenv("QVDEVICE_POLICIES");
  if (path == nullptr || *path == '\0') {
    return {};
  }
  auto result = parsePolicies(textOf(path));
  if (const auto* refusal = std::get_if<Refusal>(&result)) {
    refuse(std::string(path) + ":" + std::to_string(refusal->line) + ":" + std::to_string(refusal->column) + ": " +
           refusal->reason);
  }
  return std::get<Policies>(std::move(result));
}

/// The policies of the moment, and all before them: somebody may still be reading those.
struct History {
  std::mutex changing;
  std::forward_list<Policies> all{readPolicies()};
  std::atomic<const Policies*> now{&all.front()};
};

History& history() {
  static History& one = *new History;
  return one;
}

__attribute__((constructor)) void readAtLoad() { policies(); }

} // namespace

const Policies& policies() { return *history().now.load(); }

Change changePolicies(const std::function<Taken(const Policies&)>& change) {
  const std::lock_guard locked(history().changing);
  const Policies& before = policies();
  Taken taken = change(before);
  if (auto* refusal = std::get_if<Refusal>(&taken)) {
    return {&before, &before, std::move(*refusal)};
  }
  history().all.push_front(std::get<Policies>(std::move(taken)));
  history().now = &history().all.front();
  return {&before, &history().all.front(), std::nullopt};
}

} // namespace zorbel
