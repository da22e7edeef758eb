#pragma once

#include <string>
#include <vector>

namespace qvdevice {

struct ExecOptions {
  bool keep = false;
  std::vector<std::string> command;
};

/// Runs a program in a container of its own and answers with its exit status, 128+n when signal n ended it,
/// 126 or 127 when it could not be started.
int exec(const ExecOptions& options);

} // namespace qvdevice
