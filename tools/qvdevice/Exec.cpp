#include "Exec.h"

#include <array>
#include <cstdio>
#include <optional>
#include <system_error>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "Child.h"
#include "Console.h"
#include "Container.h"
#include "Device.h"
#include "ExtensionService.h"

namespace qvdevice {

namespace {

bool leadToTheSame(int left, int right) {
  struct stat first{};
  struct stat second{};
  return fstat(left, &first) == 0 && fstat(right, &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

/// Waits for the end while what the program says is passed on, if there is a console for that, and the extensions that
/// it asks for are started; the status that waitpid gives.
int waitServing(Child& child, SignalQueue& signals, const Console* console, ExtensionService* extensions) {
  for (;;) {
    // Asked before the last of its output is passed on: what it said before it ended is there by then.
    const auto status = child.poll();
    if (console != nullptr) {
      console->forwardTo(STDERR_FILENO);
    }
    if (status) {
      return *status;
    }
    std::array<pollfd, 3> ready{{{console != nullptr ? console->readingEnd() : -1, POLLIN, 0},
                                 {signals.descriptor(), POLLIN, 0},
                                 {extensions != nullptr ? extensions->descriptor() : -1, POLLIN, 0}}};
    poll(ready.data(), ready.size(), -1);
    signals.forwardTo(child.pid());
    if (extensions != nullptr) {
      extensions->serve();
    }
  }
}

} // namespace

int exec(const ExecOptions& options) {
  const DeviceToRunOn device(options.device, options.installed);
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
  launch.environment["QVDEVICE_DEVICE"] =
      device.folder().empty() ? std::nullopt : std::optional(device.folder().string());
  launch.environment["QVDEVICE_EXTENSIONS"] = std::nullopt;
  // The confined program can write nowhere else; what looks for the usual place finds one that works.
  launch.environment["TMPDIR"] = temporary.string();
  launch.environment["TEST_TMPDIR"] = temporary.string();
  try {
    SignalQueue signals;
    // A terminal can be opened again by its path, and a program may look whether it has one.
    std::optional<Console> console;
    if (isatty(STDERR_FILENO) == 0) {
      console.emplace();
      launch.descriptors.emplace_back(console->writingEnd(), STDERR_FILENO);
      if (leadToTheSame(STDOUT_FILENO, STDERR_FILENO)) {
        launch.descriptors.emplace_back(console->writingEnd(), STDOUT_FILENO); // so that nothing overtakes anything
      }
    }
    std::optional<ExtensionService> extensions;
    if (!device.folder().empty()) {
      extensions.emplace(device.folder(), launch.descriptors);
      launch.environment["QVDEVICE_EXTENSIONS"] = extensions->address();
    }
    Child child(launch);
    return shellStatus(waitServing(child, signals, console ? &*console : nullptr, extensions ? &*extensions : nullptr));
  } catch (const std::system_error& error) {
    std::fprintf(stderr, "qvdevice: cannot start %s: %s\n", options.command.front().c_str(),
                 error.code().message().c_str());
    return error.code() == std::errc::no_such_file_or_directory ? 127 : 126;
  }
}

} // namespace qvdevice
