#pragma once

#include "Container.h"

namespace qvdevice {

/// The pipe through which an app says what it says. It has a name, as a terminal has: whoever puts something else in
/// the place of the app's standard error, and later wants it back, opens it again by its path.
class Console {
public:
  /// Throws std::system_error, or std::runtime_error when there is no place for it.
  Console();
  ~Console();
  Console(const Console&) = delete;
  Console& operator=(const Console&) = delete;

  /// Reading never waits, and never finds an end: the app may have closed its last writing end, and come back.
  int readingEnd() const { return readingEnd_; }
  int writingEnd() const { return writingEnd_; }

  /// Passes on what is there.
  void forwardTo(int descriptor) const;

private:
  TemporaryContainer folder_; // not in the app's own container, where it would find it among its files
  int readingEnd_ = -1;
  int writingEnd_ = -1;
};

} // namespace qvdevice
