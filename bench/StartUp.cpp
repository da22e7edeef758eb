// What the library adds to the start of an app: from the start of its process until it is ready.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Report.h"
#include "SideBySide.hpp"

namespace {

double nanoseconds(const timespec& time) {
  return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

[[noreturn]] void giveUp(const char* what, int error) {
  std::fprintf(stderr, "StartUp: %s: %s\n", what, std::strerror(error));
  std::exit(1);
}

/// This process's environment with `library` to be loaded before anything else.
std::vector<std::string> environmentWith(const char* library) {
  std::vector<std::string> environment;
  for (char** entry = environ; *entry; ++entry) {
    environment.emplace_back(*entry);
  }
  if (library) {
    environment.push_back(std::string("LD_PRELOAD=") + library);
  }
  return environment;
}

struct Start {
  const char* library; // loaded before all others, or null
  const char* app;     // what EmptyApp is to do before it is ready, or null: nothing
  double processor = 0;
};

/// Starts the app and answers how long it took to be ready, in nanoseconds.
double start(Start& what) {
  int pipeEnds[2];
  if (pipe2(pipeEnds, O_CLOEXEC) != 0) {
    giveUp("pipe", errno);
  }
  constexpr int descriptorInTheApp = 3;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], descriptorInTheApp);

  std::string program = BENCH_EMPTY_APP;
  std::string descriptor = std::to_string(descriptorInTheApp);
  std::string first = what.app ? what.app : "";
  char* const arguments[] = {program.data(), descriptor.data(), first.data(), nullptr};
  std::vector<std::string> environment = environmentWith(what.library);
  std::vector<char*> variables;
  for (std::string& entry : environment) {
    variables.push_back(entry.data());
  }
  variables.push_back(nullptr);

  timespec before{};
  clock_gettime(CLOCK_MONOTONIC, &before);
  pid_t child = 0;
  if (const int error = posix_spawn(&child, program.c_str(), &actions, nullptr, arguments, variables.data())) {
    giveUp(program.c_str(), error);
  }
  posix_spawn_file_actions_destroy(&actions);
  close(pipeEnds[1]);
  BenchReport report{};
  const ssize_t got = read(pipeEnds[0], &report, sizeof report);
  close(pipeEnds[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (got != static_cast<ssize_t>(sizeof report) || status != 0) {
    std::fprintf(stderr, "StartUp: the app did not get ready and end well (wait status %d)\n", status);
    std::exit(1);
  }
  what.processor = nanoseconds(report.processor);
  return nanoseconds(report.ready) - nanoseconds(before);
}

/// Each variant's time by the clock under its name and its processor time under the name with "Processor": on a busy
/// machine the first also counts the time of others.
void StartUp(benchmark::State& state) {
  struct Case {
    std::string name;
    Start start;
    std::vector<double> processor;
  };
  Case cases[] = {
      {"app", {nullptr, nullptr}, {}},
      {"withSDK", {BENCH_SDK, nullptr}, {}},
      {"withLibrary", {BENCH_LIBRARY, nullptr}, {}},
      {"usedApp", {nullptr, "used"}, {}},
      {"usedWithSDK", {BENCH_SDK, "used"}, {}},
      {"usedWithLibrary", {BENCH_LIBRARY, "used"}, {}},
  };
  std::vector<bench::Variant> variants;
  for (Case& each : cases) {
    variants.push_back({each.name, [&each] {
                          const double taken = start(each.start);
                          each.processor.push_back(each.start.processor);
                          return taken;
                        }});
  }
  bench::sideBySide(state, variants);
  for (Case& each : cases) {
    state.counters[each.name + "Processor"] = bench::median(each.processor);
  }
}

} // namespace

BENCHMARK(StartUp)->Iterations(25)->Repetitions(7)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
