#pragma once

#include <stdexcept>
#include <string>

namespace qvwrap {

/// Exit statuses; those from 64 on as in sysexits.h.
enum Status : int {
  kDone = 0,         // done; of --check: wrapped
  kNotWrapped = 1,   // of --check
  kHalfWrapped = 2,  // of --check: wrapped in part, or not by qvwrap
  kUsage = 64,       // the command line
  kRefused = 65,     // the app or the framework is not one that this can be done to
  kNoInput = 66,     // a file that is not there or cannot be read
  kInternal = 70,    //
  kCannotWrite = 73, // the place of the app cannot be written to
};

/// Why nothing was done, as a sentence without its full stop, and the exit status that tells of it.
class Failure : public std::runtime_error {
public:
  Failure(Status status, const std::string& sentence) : std::runtime_error(sentence), status_(status) {}

  Status status() const { return status_; }

private:
  Status status_;
};

} // namespace qvwrap
