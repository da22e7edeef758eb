#pragma once

#include <stdexcept>
#include <string>

namespace qvdevice {

/// Exit statuses of qvdevice itself; those from 64 on as in sysexits.h.
enum Status : int {
  kDone = 0,
  kAppFailed = 1,    // it ended in a way in which a real app does not, or did not do what an event asked for
  kAppHung = 2,      // it did not answer, and was ended
  kUsage = 64,       // the command line
  kBadInput = 65,    // a file that qvdevice or the app was given
  kNoInput = 66,     // a file that is not there
  kCannotStart = 69, // the program does not start here
  kInternal = 70,
  kCannotWrite = 74, // the report
};

/// What went wrong, as a sentence, and the exit status that tells of it.
class Failure : public std::runtime_error {
public:
  Failure(Status status, const std::string& sentence) : std::runtime_error(sentence), status_(status) {}

  Status status() const { return status_; }

private:
  Status status_;
};

} // namespace qvdevice
