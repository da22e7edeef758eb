// A host as a child process with the library before it, and with a standard error of the test's choice.
#pragma once

#include "support/Child.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

using Lines = std::vector<std::string>;

class LogCapture : public testing::Test {
protected:
  void SetUp() override;

  /// Runs the host; `words` are what it does. Gives, in order, the log as "<level> <text>", calls at the SDK as "sdk
  /// <call> <value>", and what the host tells. In all of it "<capture>" stands for the path of the capture file.
  Lines run(const Lines& words, const std::function<void()>& prepare = {}, int status = 0);
  /// The same with a file as standard error, which a process has that was started from a script.
  Lines runIntoFile(const Lines& words);

  std::string logs() const { return container + "/Library/Logs/Zorbel"; }
  /// The capture files, oldest first.
  std::vector<std::string> captures() const;
  static std::string content(const std::string& path);
  static void write(const std::string& path, const std::string& text);

  std::string container;
  std::string original;
  ChildResult result;
};

/// Puts what a path leads to in the place of standard error.
void takeAsStandardError(const std::string& path);

/// What every start begins with, and how load leaves things when the capture has begun.
Lines afterLoad(const Lines& more);
