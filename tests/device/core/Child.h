#pragma once

#include "support/Child.h"

/// The starter with these variables alone. It does what `words` say; see Starter.mm.
inline ChildResult runStarter(const std::vector<std::string>& words, const Environment& environment) {
  std::vector<std::string> command{DEVICE_STARTER};
  command.insert(command.end(), words.begin(), words.end());
  return runChild(command, environment);
}
