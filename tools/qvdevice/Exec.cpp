#include "Exec.h"

#include <cstdio>
#include <system_error>

#include "Child.h"
#include "Container.h"

namespace qvdevice {

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
  // The confined program can write nowhere else; what looks for the usual place finds one that works.
  launch.environment["TMPDIR"] = temporary.string();
  launch.environment["TEST_TMPDIR"] = temporary.string();
  try {
    SignalQueue signals;
    Child child(launch);
    return shellStatus(child.wait(signals));
  } catch (const std::system_error& error) {
    std::fprintf(stderr, "qvdevice: cannot start %s: %s\n", options.command.front().c_str(),
                 error.code().message().c_str());
    return error.code() == std::errc::no_such_file_or_directory ? 127 : 126;
  }
}

} // namespace qvdevice
