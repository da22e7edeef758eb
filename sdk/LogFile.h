#pragma once

#include <mutex>
#include <string>

namespace zorbel {

/// The SDK's log file. Lines of several threads never mix.
class LogFile {
public:
  explicit LogFile(std::string path) : path_(std::move(path)) {}

  /// Appends, and makes the file and its folders when they are not there (any more): an app may delete all its files.
  /// A file that cannot be written is no reason to disturb the app; nothing is reported.
  void append(const std::string& line);

private:
  bool open();

  const std::string path_;
  std::mutex lock_;
  int descriptor_ = -1;
};

/// One whole write to standard output, which an app's own lines do not interrupt.
void writeToConsole(const std::string& line);

} // namespace zorbel
