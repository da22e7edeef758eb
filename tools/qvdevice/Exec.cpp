#include "Exec.h"

#include <array>
#include <cstdio>
#include <system_error>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Child.h"
#include "Console.h"
#include "Container.h"

namespace qvdevice {

namespace {

bool leadToTheSame(int left, int right) {
  struct stat first{};
  struct stat second{};
  return fstat(left, &first) == 0 && fstat(right, &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

/// Waits for the end while what the program says is passed on; the status that waitpid gives.
int waitForwarding(Child& child, SignalQueue& signals, const Console& console) {
  for (;;) {
    // Asked before the last of its output is passed on: what it said before it ended is there by then.
    const auto status = child.poll();
    console.forwardTo(STDERR_FILENO);
    if (status) {
      return *status;
    }
    std::array<pollfd, 2> ready{{{console.readingEnd(), POLLIN, 0}, {signals.descriptor(), POLLIN, 0}}};
    poll(ready.data(), ready.size(), -1);
    signals.forwardTo(child.pid());
  }
}

} // namespace

int exec(const ExecOptions& options) {
  TemporaryContainer container;
  if (options.keep) {
    container.keep();
    std::fprintf(stderr, "qvdevice: container %s\n", container.path().c_str());
  }
  const std::filesystem::path temporary = container.path() / "tmp";
  std::filesystem::create_directory(temporary);

  Launch launch;
  launch.command = options.command;
  launch.environment["QVDEVICE_CONTAINER"] = container.path().string();
  launch.environment["QVDEVICE_DEVICE"] = std::nullopt;
  // The confined program can write nowhere else; what looks for the usual place finds one that works.
  launch.environment["TMPDIR"] = temporary.string();
  launch.environment["TEST_TMPDIR"] = temporary.string();
  try {
    SignalQueue signals;
    // A terminal can be opened again by its path, and a program may look whether it has one.
    if (isatty(STDERR_FILENO) != 0) {
      Child child(launch);
      return shellStatus(child.wait(signals));
    }
    const Console console;
    launch.descriptors.emplace_back(console.writingEnd(), STDERR_FILENO);
    if (leadToTheSame(STDOUT_FILENO, STDERR_FILENO)) {
      launch.descriptors.emplace_back(console.writingEnd(), STDOUT_FILENO); // so that nothing overtakes anything
    }
    Child child(launch);
    return shellStatus(waitForwarding(child, signals, console));
  } catch (const std::system_error& error) {
    std::fprintf(stderr, "qvdevice: cannot start %s: %s\n", options.command.front().c_str(),
                 error.code().message().c_str());
    return error.code() == std::errc::no_such_file_or_directory ? 127 : 126;
  }
}

} // namespace qvdevice
