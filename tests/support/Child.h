#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

/// How a program ended that a test started.
struct ChildResult {
  /// What it exited with; 128 and the signal's number when a signal ended it.
  int status = 0;
  std::string output;
  std::string errors;
};

using Environment = std::vector<std::pair<std::string, std::string>>;

/// Runs a program to its end in exactly this environment and the sanitizers' options, to which it may add. `prepare`
/// runs in the child, before the program: it may put something else in the place of its standard error.
ChildResult runChild(const std::vector<std::string>& command, const Environment& environment,
                     const std::function<void()>& prepare = {});

/// The options of the sanitizers in this process, as entries of an environment.
std::vector<std::string> sanitizerOptions();

/// A folder inside this test's own container, made for the caller.
std::string freshFolder();
